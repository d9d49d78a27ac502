// Pictures of the window, in files.
#pragma once

#include "platform/foundation/FoundationTypes.h"

class QImage;

namespace Screenshot {

// Saves a picture; the kind follows from the end of the file's name, PNG without one. Answers the sentence
// to print when that fails, null when it worked.
NSString save(const QImage& picture, const NSString& file);

// Where pictures go that the user asks for with a key.
NSString picturesFolder();
// A file of that folder for a picture of that moment: a name that no file has yet, with a number where a
// picture was taken in the same second. Makes the folder where it is missing.
NSString newFile(const NSString& folder, const NSDate& date);

} // namespace Screenshot
