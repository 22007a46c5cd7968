#include "viewer/hyper_find.h"

#include <gtest/gtest.h>

#include <random>

#include "tests/support/seed.h"

namespace tallowmere {
namespace {

std::string fields(const CriteriaInput& input) {
  return input.criteria + "|" + std::to_string(input.search_type) + (input.match_case ? "C" : "c") +
         std::to_string(input.prox_before) + "," + std::to_string(input.prox_after) +
         (input.prox_all ? "+" : "-");
}

TEST(HyperFind, TheUsersCriteriaAreNeverLost) {
  std::mt19937 random(test_seed());
  HyperFind hyper;
  std::string own = "|2c0,0-", last_hyper;
  CriteriaInput current;
  auto state = HyperFind::none;
  bool searched = true;  // since the last HyperFind or Restore
  for (int step = 0; step < 3000; ++step) {
    const std::string name = std::to_string(step);
    const auto action = random() % 3;
    if (action == 0) {
      current = {random() % 4 == 0 ? "" : "own " + name, search_near, true, 7, 9, true};
      own = fields(current);
      hyper.user_searched();
      if (state != HyperFind::none) state = HyperFind::user_restored;
    } else if (action == 1) {
      // To go back to no criteria at all is of no use.
      if (searched && current.criteria.empty() && state == HyperFind::user_restored)
        own = last_hyper;
      current = hyper.find("hyper " + name, current);
      last_hyper = "hyper " + name + "|2c110,110-";
      state = HyperFind::hyper_current;
    } else if (state != HyperFind::none) {  // otherwise the button is disabled
      current = hyper.restore(current);
      state =
          state == HyperFind::hyper_current ? HyperFind::user_restored : HyperFind::hyper_current;
    }
    if (action < 2 || state != HyperFind::none) searched = action == 0;
    ASSERT_EQ(hyper.hyper_state(), state) << step;
    ASSERT_EQ(fields(current), state == HyperFind::hyper_current ? last_hyper : own) << step;
  }
}

}  // namespace
}  // namespace tallowmere
