// Where the sources and the resources lie that tests read.
#pragma once

#include <QString>

// The full path of a path that is written from the root of the repository.
QString sourcePath(const char* relative);
