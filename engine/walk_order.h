#pragma once

#include <cstddef>
#include <list>
#include <string>
#include <string_view>
#include <vector>

#include "engine/search_folder.h"

namespace tallowmere {

/// The known folders of a search in the order of the walk: depth first, each folder's own files
/// before its subfolders, and those by name. Threads claim folders for listing, and their files for
/// testing, ahead of the first folder, which is the one being delivered. A folder stays where it is
/// in memory until it is dropped. Used by one thread at a time.
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

  /// Adds a place after all others: a folder that is still to be listed, or one that the caller
  /// fills and then sets listed.
  Place& append(std::string_view path, SearchFolder::Source source);

  /// Claims the first known folder that nobody has claimed, to be listed; null without one. With
  /// `at_front_only`, only when all before it has been delivered.
  Place* claim_folder(bool at_front_only);
  /// Counts the folders that can be claimed next to the first such one, itself included.
  std::size_t siblings_left();
  /// Opens a place for testing and delivery, and its subfolders for being claimed.
  void set_listed(Place& place);
  /// Claims the next files in order, at most `most`, and adds them to `tasks`.
  void claim_files(std::size_t most, std::vector<Task>& tasks);

  /// Returns the place to deliver now; null while its folder has no place yet, or at the end.
  Place* front();
  /// Makes the front folder one that is still to be listed; nothing of it may have been claimed.
  void unlist_front();
  void drop_front();
  bool empty();
  /// Returns the folder of the first place, or the one that its subfolders are in; empty without
  /// any.
  std::string first_path() const { return places_.empty() ? "" : places_.front().folder.path(); }

  /// Counts the files to be tested that nobody has claimed.
  std::size_t untested() const { return untested_; }
  /// Returns how much the places hold, in files; a folder counts as some files.
  std::size_t held() const { return held_; }

 private:
  using Position = std::list<Place>::iterator;
  Place& insert(Position before, std::string_view path, SearchFolder::Source source);
  Position first_unclaimed();
  void drop(Position place);

  std::list<Place> places_;
  std::list<Place> spare_;  ///< to be used again
  /// Nothing before these is left to claim. They wait at a folder that is being listed.
  Position folders_from_ = places_.end();
  Position files_from_ = places_.end();
  std::size_t untested_ = 0;
  std::size_t held_ = 0;
  std::string path_;  ///< of the folder being claimed
};

}  // namespace tallowmere
