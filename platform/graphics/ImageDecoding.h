// Pictures from the bytes of a file.
#pragma once

#include "platform/foundation/FoundationTypes.h"

#include <QImage>

// The pixels of a PNG or JPEG file, turned upright, in a format that draws fast; a null picture where
// the bytes are none, are cut short, or their header tells a size beyond the limits. Any thread.
QImage decodedImage(const NSData&);

// The same pixels in premultiplied ARGB32, or in RGB32 where they have no alpha.
QImage inDrawingFormat(const QImage&);
