// The environment of a test program: the same on every desk.
//
// A developer's desktop names languages, scales and themes in environment variables, and toolkits and ICU
// read them. Called first in main(), before anything could have.
#pragma once

namespace Surroundings {

void makePlain();

} // namespace Surroundings
