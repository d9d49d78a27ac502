// What Qt says on standard error, less what nobody needs to know.
#pragma once

namespace ToolkitMessages {

// From now on Qt keeps to itself which faces do not have a script, of which it tells one by one while it
// looks for a face that has it. Everything else is said as before.
void dropSearchesForFonts();

} // namespace ToolkitMessages
