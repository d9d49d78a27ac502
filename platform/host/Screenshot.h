// Pictures of the window, in files.
#pragma once

#include "platform/foundation/FoundationTypes.h"

class QImage;

namespace Screenshot {

// Saves a picture; the kind follows from the end of the file's name, PNG without one. Answers the sentence
// to print when that fails, null when it worked.
NSString save(const QImage& picture, const NSString& file);

// Where a picture goes that the user asks for with a key.
NSString fileForDate(const NSDate& date);

} // namespace Screenshot
