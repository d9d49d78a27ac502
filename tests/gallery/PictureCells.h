// Compares pictures as an eye does from a step away: cell by cell instead of pixel by pixel.
//
// Both pictures are laid out in cells of 4 × 4 points, and the mean colours of the cells are compared.
// Another version of the font renderer puts the ink of a letter into other pixels, but hardly more or less of
// it into a cell; what has lost its tint, its place or its picture changes the ink of whole cells. What is
// thinner than a tenth of a cell and pale, such as a hairline, is beyond this comparison.
#pragma once

#include <QImage>

#include <gtest/gtest.h>

struct CellTolerance {
    int channel = 30; // how far red, green and blue of a cell may be off
    int cells = 2; // how many cells may be further off
};

// The picture with a pixel for each cell of that many pixels a side; what is left over makes smaller cells.
QImage meanCells(const QImage& picture, int side);

// A picture's devicePixelRatio() says how many of its pixels make a point; the two may differ in it, for both
// have the same cells. When they do not match, the actual, the expected and the difference picture are left
// in the folder failed_pictures, as picturesMatch() does.
testing::AssertionResult cellsMatch(
    const QImage& actual, const QImage& expected, CellTolerance tolerance = {});
