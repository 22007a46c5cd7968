#include "engine/file_system.h"

#include <algorithm>
#include <utility>

#include "engine/letter_case.h"

namespace tallowmere {

std::string with_separator(std::string folder) {
  const bool has_one = !folder.empty() && (folder.back() == path_separator || folder.back() == '/');
  if (!has_one) folder.push_back(path_separator);
  return folder;
}

void FolderListing::clear() {
  begun_ = false;
  names_.clear();
  files_.clear();
  folders_.clear();
}

void FolderListing::add_file(std::string_view name, const FileFacts* facts, bool online_only) {
  files_.push_back(
      {{names_.size(), name.size()}, facts != nullptr, online_only, facts ? *facts : FileFacts{}});
  names_.append(name);
}

void FolderListing::add_folder(std::string_view name) {
  folders_.push_back({names_.size(), name.size()});
  names_.append(name);
}

std::size_t FolderListing::remove_files(const std::function<bool(std::string_view)>& unwanted) {
  return std::erase_if(files_, [&](const FileRow& row) { return unwanted(text(row.name)); });
}

void FolderListing::set_facts(std::size_t index, const FileFacts& facts) {
  files_[index].facts_known = true;
  files_[index].facts = facts;
}

FolderListing::File FolderListing::file(std::size_t index) const {
  const FileRow& row = files_[index];
  return {text(row.name), row.facts_known, row.facts, row.online_only};
}

std::string_view FolderListing::folder(std::size_t index) const {
  return text(folders_[index]);
}

std::string_view FolderListing::text(const Name& name) const {
  return std::string_view(names_).substr(name.start, name.length);
}

std::vector<std::string> sorted_subfolders(const FolderListing& listing) {
  std::vector<std::pair<std::string, std::string>> keyed;
  keyed.reserve(listing.folder_count());
  for (std::size_t i = 0; i < listing.folder_count(); ++i) {
    keyed.emplace_back(lower_case(listing.folder(i)), listing.folder(i));
  }
  std::sort(keyed.begin(), keyed.end());
  std::vector<std::string> names;
  names.reserve(keyed.size());
  for (auto& [key, name] : keyed) names.push_back(std::move(name));
  return names;
}

}  // namespace tallowmere
