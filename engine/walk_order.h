#pragma once

#include <cstddef>
#include <list>
#include <string>
#include <string_view>
#include <vector>

#include "engine/search_folder.h"

namespace tallowmere {

/// The folders of a search, as far as they are known, in the order of the walk: depth first, each
/// folder's own files before its subfolders, those by name. Folders are claimed for listing, and
/// their files for testing, ahead of the first folder, which is the one being delivered. A folder
/// stays where it is in memory until it is dropped. Used by one thread at a time.
class WalkOrder {
 public:
  /// One folder's files, or the subfolders of one that nobody has claimed yet.
  struct Place {
    enum class State { known, claimed, listed };

    SearchFolder folder;
    State state = State::known;
    std::size_t claimed_turns = 0;

    bool holds_subfolders = false;  ///< `folder` then has their names, and the path before them
    std::size_t next_subfolder = 0;

    std::list<Place>::iterator self;

    bool listed() const { return state == State::listed; }
  };

  /// A file to test: a turn of a place.
  struct Task {
    Place* place;
    std::size_t turn;
  };

  /// Adds a place behind all others: a folder that is still to be listed, or else one that the
  /// caller fills and then sets listed.
  Place& append(std::string_view path, SearchFolder::Source source);

  /// The first folder known that nobody has claimed, to be listed; null without one. With
  /// `at_front_only`, only when all before it has been delivered.
  Place* claim_folder(bool at_front_only);
  /// How many folders can be claimed next in the folder of the first one.
  std::size_t siblings_left();
  /// The place can be tested and delivered, and its subfolders be claimed.
  void set_listed(Place& place);
  /// Claims the next files in order, at most `most`.
  void claim_files(std::size_t most, std::vector<Task>& tasks);

  /// The place to deliver now; null while its folder has no place yet, or at the end.
  Place* front();
  /// The front folder is to be listed once more; nothing of it has been claimed.
  void unlist_front();
  void drop_front();
  bool empty();
  /// The folder of the first place, or the one that its subfolders are in; empty without any.
  std::string first_path() const { return places_.empty() ? "" : places_.front().folder.path(); }

  /// Files to be tested that nobody has claimed.
  std::size_t untested() const { return untested_; }
  /// What the places hold that are not dropped yet, in files; a folder counts as some of them.
  std::size_t held() const { return held_; }

 private:
  using Position = std::list<Place>::iterator;
  Place& insert(Position before, std::string_view path, SearchFolder::Source source);
  Position first_unclaimed();
  void drop(Position place);

  std::list<Place> places_;
  std::list<Place> spare_;  ///< to be used again
  /// Before these nothing is left to claim. They wait at a folder that is being listed.
  Position folders_from_ = places_.end();
  Position files_from_ = places_.end();
  std::size_t untested_ = 0;
  std::size_t held_ = 0;
  std::string path_;  ///< of the folder being claimed
};

}  // namespace tallowmere
