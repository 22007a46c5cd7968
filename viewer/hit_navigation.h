#pragma once

#include <cstdint>

#include "viewer/file_viewer.h"
#include "viewer/hit_finder.h"
#include "viewer/viewer_host.h"

namespace tallowmere {

enum class FindResult {
  found,
  not_found,  ///< the first chunk shows; the user has been told, unless there are no criteria
  stopped,    ///< by the host; the view is as it was
  no_file     ///< no file is in the viewer, or none any more
};

/// Find Next and Find Prev: steps through the hits of the viewed file and once round its end. Hits
/// are looked for in the chunk that shows, as it shows, and in the raw bytes of all others.
class HitNavigation {
 public:
  HitNavigation(FileViewer& viewer, TextFace& face, ViewerHost& host);

  /// The next hit behind the first character of the selection; the first of the file when that has
  /// just been opened.
  FindResult find_next(const HitFinder& finder);
  /// The last hit before the selection.
  FindResult find_prev(const HitFinder& finder);

  /// Shows the file's beginning, for a file in which nothing is to be found.
  FindResult show_first_chunk();

  /// Scrolls so that the caret's line stands in the middle.
  void center_highlight();

  /// How the last step that found a hit came there.
  struct StepMade {
    bool forward = true;
    bool wrapped = false;  ///< round an end of the file
    bool fresh = false;    ///< it began with the file, which had just been opened
  };
  const StepMade& last_step() const { return last_step_; }

 private:
  class Walk;
  FindResult find(const HitFinder& finder, bool forward);
  FindResult show_hit(const Walk& walk);
  ChunkResult load_first_chunk();
  FindResult report_none(const HitFinder& finder);

  FileViewer& viewer_;
  TextFace& face_;
  ViewerHost& host_;
  StepMade last_step_;
};

}  // namespace tallowmere
