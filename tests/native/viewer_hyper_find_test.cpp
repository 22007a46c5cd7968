#include <gtest/gtest.h>

#include <random>

#include "tests/support/seed.h"
#include "viewer/hyper_find.h"

namespace tallowmere {
namespace {

CriteriaInput users(const std::string& criteria, int type = search_near) {
  return {criteria, type, true, 7, 9, true};
}

std::string fields(const CriteriaInput& input) {
  return input.criteria + "|" + std::to_string(input.search_type) + (input.match_case ? "C" : "c") +
         std::to_string(input.prox_before) + "," + std::to_string(input.prox_after) +
         (input.prox_all ? "+" : "-");
}

std::string hyper_fields(const std::string& text) {
  return text + "|2c110,110-";
}

TEST(HyperFind, BackAndForth) {
  HyperFind hyper;
  EXPECT_EQ(hyper.hyper_state(), HyperFind::none);
  hyper.user_searched();
  EXPECT_EQ(hyper.hyper_state(), HyperFind::none);
  EXPECT_EQ(hyper.caption(true), "HyperFind");
  EXPECT_EQ(hyper.tool_tip(false), "Find Selected Text");

  CriteriaInput current = hyper.find("line\r\nbreak", users("own"));
  EXPECT_EQ(fields(current), hyper_fields("line\r\nbreak"));
  EXPECT_EQ(hyper.caption(false), "HyperFind");
  current = hyper.find("again", current);
  current = hyper.restore(current);
  EXPECT_EQ(fields(current), fields(users("own")));
  EXPECT_EQ(hyper.hyper_state(), HyperFind::user_restored);
  EXPECT_EQ(hyper.caption(false), "Restore Hyper");
  EXPECT_EQ(hyper.tool_tip(false), "Redo Last HyperFind");
  EXPECT_EQ(hyper.caption(true), "HyperFind");
  EXPECT_EQ(hyper.tool_tip(true), "Find Selected Text");
  current = hyper.restore(current);
  EXPECT_EQ(fields(current), hyper_fields("again"));
  EXPECT_EQ(hyper.hyper_state(), HyperFind::hyper_current);
}

TEST(HyperFind, SearchingForNothingLeavesTheHyperFindBeforeToGoBackTo) {
  HyperFind hyper;
  hyper.user_searched();
  hyper.find("first", users("own"));
  hyper.user_searched();
  const CriteriaInput current = hyper.find("second", users(""));
  EXPECT_EQ(fields(hyper.restore(current)), hyper_fields("first"));
}

TEST(HyperFind, TheUsersCriteriaAreNeverLost) {
  std::mt19937 random(test_seed());
  HyperFind hyper;
  std::string own = "|2c0,0-", last_hyper;
  CriteriaInput current;
  int restored = 0;
  for (int step = 0; step < 5000; ++step) {
    const bool own_before = hyper.hyper_state() != HyperFind::hyper_current;
    switch (random() % 3) {
      case 0:
        current = users("own " + std::to_string(step), static_cast<int>(random() % 4));
        own = fields(current);
        hyper.user_searched();
        break;
      case 1:
        current = hyper.find("hyper " + std::to_string(step), current);
        last_hyper = fields(current);
        ASSERT_EQ(last_hyper, hyper_fields("hyper " + std::to_string(step)));
        break;
      default:
        if (hyper.hyper_state() == HyperFind::none) continue;  // the button is disabled
        current = hyper.restore(current);
        ASSERT_EQ(fields(current), own_before ? last_hyper : own) << "step " << step;
        ++restored;
    }
    const bool is_own = hyper.hyper_state() != HyperFind::hyper_current;
    ASSERT_EQ(fields(current), is_own ? own : last_hyper) << "step " << step;
  }
  EXPECT_GT(restored, 1000);
}

}  // namespace
}  // namespace tallowmere
