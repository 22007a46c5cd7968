#pragma once

#include <vector>

#include "viewer/file_viewer.h"
#include "viewer/hit_finder.h"
#include "viewer/viewer_host.h"

namespace tallowmere {

/// The hits on view, to be marked in the text box: all at which Find Next stops in the chunk that
/// shows. Asked while the box paints, so it needs nothing from the disk, serves no events, and
/// takes moments however dense the hits are.
class HitMarks {
 public:
  /// In a view with more occurrences than this, whether hits or not, the rest gets no mark.
  static constexpr int most = 6000;

  /// Returns the characters of the text shown, at or after `from` and before `to`, that belong to
  /// hits: ascending stretches that do not touch. Some before and after may be included.
  const std::vector<TextSelection>& between(FileViewer& viewer, const HitFinder& finder, int from,
                                            int to);
  /// Forgets the marks, as when the finder is replaced.
  void forget() { version_ = -1; }

 private:
  void find(FileViewer& viewer, const HitFinder& finder);

  std::vector<TextSelection> stretches_;
  int version_ = -1;  ///< of the text in which they were found
  int from_ = 0;
  int to_ = 0;
};

}  // namespace tallowmere
