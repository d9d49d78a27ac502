// Compares pictures with a tolerance, and leaves the evidence when they differ.
//
//     EXPECT_TRUE(picturesMatch(actual, expected));
//
// When they do not match, the actual, the expected and the difference picture are written to the folder
// failed_pictures below the current one, named after the running test and, where a test compares several,
// after the picture.
#pragma once

#include <QImage>

#include <gtest/gtest.h>

struct PictureTolerance {
    int channel = 2; // how far red, green and blue may be off before a pixel counts as different
    int pixels = 0; // how many pixels may be different
};

struct PictureDifference {
    int pixels = 0; // that differ by more than the tolerance
    int largest = 0; // of all channels of all pixels
    QRect area; // around the pixels that differ
    QImage picture; // white where they differ, black elsewhere
};

// Pictures of different sizes differ in every pixel of the larger one. Alpha is left aside.
PictureDifference differenceOf(const QImage& actual, const QImage& expected, int channelTolerance);

testing::AssertionResult picturesMatch(const QImage& actual, const QImage& expected,
    PictureTolerance tolerance = {}, const std::string& pictureName = {});
