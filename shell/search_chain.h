#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace tallowmere {

/// The searches that have led to the list: a new one and those that have narrowed it since.
class SearchChain {
 public:
  void new_search(std::string_view criteria);
  void narrowed(std::string_view criteria);

  /// "invoice, then contract", of bounded length; empty while the list is not a narrowed one.
  std::string text() const;

 private:
  std::vector<std::string> steps_;  ///< the first and the last ones, as they show
  bool left_out_ = false;           ///< some between them
};

}  // namespace tallowmere
