#include "platform/graphics/DimmedColor.h"

#include "tests/support/Pictures.h"

#include <gtest/gtest.h>

namespace {

TEST(DimmedColorTest, IsTheGreyOfTheSameLuminanceAtFourFifthsOfTheOpacity)
{
    struct Row {
        std::shared_ptr<UIColor> color;
        double white;
        double alpha;
    };
    for (const Row& row : {
             Row { UIColor::colorWithRed(1, 0, 0, 1), 0.2125999927520752, 0.800000011920929 },
             Row { UIColor::colorWithRed(0, 1, 0, 0.5), 0.7152000069618225, 0.4000000059604645 },
             Row { UIColor::colorWithRed(0, 0, 1, 1), 0.0722, 0.800000011920929 },
             Row { UIColor::colorWithWhite(0.3, 1), 0.3, 0.800000011920929 },
             Row { UIColor::clearColor(), 0, 0 },
         }) {
        const auto dimmed = dimmedColor(*row.color);
        ASSERT_TRUE(dimmed && dimmed->getWhite());
        EXPECT_NEAR(dimmed->getWhite()->white, row.white, 1e-15);
        EXPECT_NEAR(dimmed->getWhite()->alpha, row.alpha, 1e-15);
    }
}

TEST(DimmedColorTest, APatternHasNone)
{
    EXPECT_EQ(dimmedColor(*UIColor::colorWithPatternImage(plainImage({ 2, 2 }, Qt::red))), nullptr);
}

} // namespace
