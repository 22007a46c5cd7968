#include "engine/walk_order.h"

#include <algorithm>

namespace tallowmere {

namespace {

constexpr std::size_t folder_weight = 8;  ///< what a folder's place takes, in files
constexpr std::size_t most_spare = 64;
constexpr std::size_t largest_spare = 1000;  ///< files; a place keeps the memory that it has had

std::size_t weight(const WalkOrder::Place& place) {
  return folder_weight + place.folder.turns().size();
}

bool has_unclaimed(const WalkOrder::Place& place) {
  return place.holds_subfolders ? place.next_subfolder < place.folder.subfolders.size()
                                : place.state == WalkOrder::Place::State::known;
}

bool has_untested(const WalkOrder::Place& place) {
  return place.listed() && place.claimed_turns < place.folder.turns().size();
}

}  // namespace

WalkOrder::Place& WalkOrder::insert(Position before, std::string_view path,
                                    SearchFolder::Source source) {
  const Position place = spare_.empty() ? places_.emplace(before) : spare_.begin();
  if (!spare_.empty()) places_.splice(before, spare_, place);
  place->folder.start(path, source);
  place->state =
      source == SearchFolder::Source::folder ? Place::State::known : Place::State::claimed;
  place->holds_subfolders = false;
  place->claimed_turns = place->next_subfolder = 0;
  place->self = place;
  held_ += folder_weight;
  // What is left to claim begins at the new place, if it began right after it.
  if (folders_from_ == before) folders_from_ = place;
  if (files_from_ == before) files_from_ = place;
  return *place;
}

WalkOrder::Place& WalkOrder::append(std::string_view path, SearchFolder::Source source) {
  return insert(places_.end(), path, source);
}

WalkOrder::Position WalkOrder::first_unclaimed() {
  while (folders_from_ != places_.end() &&
         (folders_from_->listed() || folders_from_->holds_subfolders) &&
         !has_unclaimed(*folders_from_)) {
    ++folders_from_;
  }
  return std::find_if(folders_from_, places_.end(), has_unclaimed);
}

WalkOrder::Place* WalkOrder::claim_folder(bool at_front_only) {
  const Position parent = first_unclaimed();
  if (parent == places_.end() || (at_front_only && parent != places_.begin())) return nullptr;
  Place* place = &*parent;
  if (parent->holds_subfolders) {
    path_ = parent->folder.path();
    path_ += parent->folder.subfolders[parent->next_subfolder++];
    path_ += path_separator;
    place = &insert(parent, path_, SearchFolder::Source::folder);
  }
  place->state = Place::State::claimed;
  return place;
}

std::size_t WalkOrder::siblings_left() {
  const Position parent = first_unclaimed();
  if (parent == places_.end()) return 0;
  return parent->holds_subfolders ? parent->folder.subfolders.size() - parent->next_subfolder : 1;
}

void WalkOrder::set_listed(Place& place) {
  place.state = Place::State::listed;
  held_ += place.folder.turns().size();
  for (const auto& turn : place.folder.turns()) untested_ += !turn.repeated;
  if (place.folder.subfolders.empty()) return;
  Place& rest = insert(std::next(place.self), place.folder.path(), SearchFolder::Source::folder);
  rest.holds_subfolders = true;
  rest.folder.subfolders.swap(place.folder.subfolders);
}

void WalkOrder::claim_files(std::size_t most, std::vector<Task>& tasks) {
  const auto all_claimed = [](const Place& place) {
    return place.holds_subfolders ? !has_unclaimed(place) : place.listed() && !has_untested(place);
  };
  while (files_from_ != places_.end() && all_claimed(*files_from_)) ++files_from_;
  for (Position at = files_from_; at != places_.end() && tasks.size() < most; ++at) {
    const auto& turns = at->folder.turns();
    for (; has_untested(*at) && tasks.size() < most; ++at->claimed_turns) {
      if (!turns[at->claimed_turns].repeated) tasks.push_back({&*at, at->claimed_turns});
    }
  }
  untested_ -= tasks.size();
}

WalkOrder::Place* WalkOrder::front() {
  while (!places_.empty() && places_.front().holds_subfolders && !has_unclaimed(places_.front())) {
    drop(places_.begin());
  }
  if (places_.empty() || places_.front().holds_subfolders) return nullptr;
  return &places_.front();
}

void WalkOrder::unlist_front() {
  places_.front().state = Place::State::known;
  folders_from_ = files_from_ = places_.begin();
}

void WalkOrder::drop_front() {
  drop(places_.begin());
}

bool WalkOrder::empty() {
  front();
  return places_.empty();
}

void WalkOrder::drop(Position place) {
  held_ -= weight(*place);
  if (folders_from_ == place) ++folders_from_;
  if (files_from_ == place) ++files_from_;
  if (spare_.size() < most_spare && weight(*place) < largest_spare) {
    spare_.splice(spare_.begin(), places_, place);
  } else {
    places_.erase(place);
  }
}

}  // namespace tallowmere
