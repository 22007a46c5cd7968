#pragma once

#include <vector>

#include "viewer/file_viewer.h"
#include "viewer/hit_finder.h"
#include "viewer/viewer_host.h"

namespace tallowmere {

/// The hits on view, to be marked in the text box: all at which Find Next stops in the chunk that
/// shows. Asked while the box paints: needs nothing of the disk, serves no events, and takes
/// moments however dense the hits are.
class HitMarks {
 public:
  /// In a view with more occurrences than these, hits or none, the rest stays without a mark.
  static constexpr int most = 6000;

  /// The characters from `from` to before `to` of the text on show that belong to hits: ascending
  /// stretches that do not touch each other. Some before and behind may be there, too.
  const std::vector<TextSelection>& between(FileViewer& viewer, const HitFinder& finder, int from,
                                            int to);
  /// The finder is another one from now on.
  void forget() { version_ = -1; }

 private:
  void find(FileViewer& viewer, const HitFinder& finder);

  std::vector<TextSelection> stretches_;
  int version_ = -1;  ///< of the text in which they were found
  int from_ = 0;
  int to_ = 0;
};

}  // namespace tallowmere
