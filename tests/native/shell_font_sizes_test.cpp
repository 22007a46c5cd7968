#include "shell/font_sizes.h"

#include <gtest/gtest.h>

#include <cmath>

namespace tallowmere {
namespace {

TEST(FontSizes, StepsFromAnyStoredSize) {
  const struct {
    double points, larger, smaller;
  } cases[] = {{6, 7, 6},      {28, 36, 26},    {72, 72, 48},      {9.75, 11, 9}, {6.5, 8, 6},
               {71.5, 72, 48}, {2160, 72, 72},  {0, 6, 6},         {5.9, 6, 6},   {11.25, 12, 10},
               {-1e300, 6, 6}, {72.25, 72, 72}, {INFINITY, 72, 72}};
  for (const auto& [points, larger, smaller] : cases) {
    EXPECT_EQ(larger_size(points), larger) << points;
    EXPECT_EQ(smaller_size(points), smaller) << points;
  }
  for (const double size : {larger_size(NAN), smaller_size(NAN)}) {
    EXPECT_TRUE(size >= 6 && size <= 72) << size;
  }
}

TEST(FontSizes, OffersAnOddSizeInItsPlace) {
  const std::string usual = "6 7 8 9 10 11 12 14 16 18 20 22 24 26 28 36 48 72 ";
  for (const auto& [points, expected] : {std::pair{9.75, "6 7 8 9 9.75 " + usual.substr(8)},
                                         {10.0, usual},
                                         {2160.0, usual + "2160 "},
                                         {-1.0, usual},
                                         {double{NAN}, usual}}) {
    std::string texts;
    for (const double size : offered_sizes(points)) texts += size_text(size) + " ";
    EXPECT_EQ(texts, expected);
  }
}

}  // namespace
}  // namespace tallowmere
