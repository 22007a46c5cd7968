#include "viewer/hyper_find.h"

#include <gtest/gtest.h>

#include <random>

#include "tests/support/seed.h"

namespace tallowmere {
namespace {

TEST(HyperFind, TheUsersCriteriaAreNeverLost) {
  std::mt19937 random(test_seed());
  HyperFind hyper;
  std::string own, last_hyper;
  CriteriaInput current;
  auto state = HyperFind::none;
  bool searched = true;  // since the last HyperFind or Restore
  for (int step = 0; step < 3000; ++step) {
    const std::string name = std::to_string(step);
    const auto action = random() % 3;
    if (action == 0) {
      current.criteria = own = random() % 4 == 0 ? "" : "own " + name;
      hyper.user_searched();
      if (state != HyperFind::none) state = HyperFind::user_restored;
    } else if (action == 1) {
      // To go back to no criteria at all is of no use.
      if (searched && current.criteria.empty() && state == HyperFind::user_restored)
        own = last_hyper;
      current = hyper.find(last_hyper = "hyper " + name, current);
      state = HyperFind::hyper_current;
    } else if (state != HyperFind::none) {  // otherwise the button is disabled
      current = hyper.restore(current);
      state =
          state == HyperFind::hyper_current ? HyperFind::user_restored : HyperFind::hyper_current;
    }
    if (action < 2 || state != HyperFind::none) searched = action == 0;
    ASSERT_EQ(hyper.hyper_state(), state) << step;
    ASSERT_EQ(current.criteria, state == HyperFind::hyper_current ? last_hyper : own) << step;
  }
}

}  // namespace
}  // namespace tallowmere
