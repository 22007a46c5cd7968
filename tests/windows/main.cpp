#include <gtest/gtest.h>

#include <cstdlib>
#include <fstream>

/// Tests start copies of this program in the place of others. A copy only notes its arguments.
int main(int argc, char** argv) {
  if (const char* trace = std::getenv("TALLOWMERE_TEST_TRACE")) {
    std::ofstream notes(trace, std::ios::binary);
    for (int i = 1; i < argc; ++i) notes << argv[i] << '\n';
    return 0;
  }
  testing::InitGoogleTest(&argc, argv);
  return RUN_ALL_TESTS();
}
