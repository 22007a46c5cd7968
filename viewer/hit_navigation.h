#pragma once

#include <cstdint>

#include "viewer/file_viewer.h"
#include "viewer/hit_finder.h"
#include "viewer/viewer_host.h"

namespace tallowmere {

enum class FindResult {
  found,
  not_found,  ///< the first chunk shows; the user has been told, unless there are no criteria
  stopped,    ///< the host stopped the step; the view is as it was
  no_file     ///< no file is in the viewer, or none any more
};

/// Find Next and Find Prev: steps through the hits of the viewed file and once round its end. Looks
/// for hits in the chunk that shows, as it shows, and in the raw bytes of all others.
class HitNavigation {
 public:
  HitNavigation(FileViewer& viewer, TextFace& face, ViewerHost& host);

  /// Goes to the next hit after the first character of the selection, or to the file's first hit
  /// when the file has just been opened.
  FindResult find_next(const HitFinder& finder);
  /// Goes to the last hit before the selection; in a file just opened, as find_next().
  FindResult find_prev(const HitFinder& finder);

  /// Shows the file's beginning, for a file in which there is nothing to find.
  FindResult show_first_chunk();

  /// Scrolls the caret's line to the middle.
  void center_highlight();

  /// How the last step that found a hit came there.
  struct StepMade {
    bool forward = true;
    bool wrapped = false;  ///< round an end of the file
    bool fresh = false;    ///< it began at the file's beginning, just after opening
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
