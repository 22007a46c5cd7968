#include "shell/font_sizes.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

namespace tallowmere {
namespace {

TEST(FontSizes, StepsFromAnyStoredSize) {
  const double endless = std::numeric_limits<double>::infinity();
  const struct {
    double points, larger, smaller;
  } cases[] = {{6, 7, 6},      {10, 11, 9},       {28, 36, 26},    {72, 72, 48},   {8.25, 9, 7},
               {9.75, 11, 9},  {11.25, 12, 10},   {13, 14, 12},    {30, 36, 28},   {6.5, 8, 6},
               {71.5, 72, 48}, {5.9, 6, 6},       {72.25, 72, 72}, {2160, 72, 72}, {0, 6, 6},
               {-1e300, 6, 6}, {endless, 72, 72}, {-endless, 6, 6}};
  for (const auto& [points, larger, smaller] : cases) {
    EXPECT_EQ(larger_size(points), larger) << points;
    EXPECT_EQ(smaller_size(points), smaller) << points;
  }
  for (const double size : {larger_size(NAN), smaller_size(NAN)}) {
    EXPECT_TRUE(size >= 6 && size <= 72) << size;
  }
}

TEST(FontSizes, OffersAnOddSizeInItsPlace) {
  const auto offered = [](double points) {
    std::string texts;
    for (const double size : offered_sizes(points)) texts += size_text(size) + " ";
    return texts;
  };
  const std::string usual = "6 7 8 9 10 11 12 14 16 18 20 22 24 26 28 36 48 72 ";
  EXPECT_EQ(offered(10), usual);
  EXPECT_EQ(offered(9.75), "6 7 8 9 9.75 10" + usual.substr(10));
  EXPECT_EQ(offered(2160), usual + "2160 ");
  for (const double absurd : {0.0, -1.0, double{INFINITY}, double{NAN}}) {
    EXPECT_EQ(offered(absurd), usual) << absurd;
  }
}

}  // namespace
}  // namespace tallowmere
