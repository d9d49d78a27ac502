// Compares a text with a file that lies beside the test, line by line.
//
// To renew the files, run the test program with ORUVANE_RENEW_DUMPS=1, read the difference that git shows,
// and commit them. Renewing is no passing: a test that renews its file fails.
#pragma once

#include <QString>

#include <gtest/gtest.h>

// The path is written from the root of the repository. A text that differs is answered with the lines that
// are missing (-) and the ones that are new (+).
testing::AssertionResult matchesFile(const QString& text, const char* path);
