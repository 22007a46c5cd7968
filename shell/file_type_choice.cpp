#include "shell/file_type_choice.h"

#include <utility>

namespace tallowmere {

std::string invalid_file_type_message() {
  return "A valid name does not possess the * / : < > ? \\ | characters. Tallowmere will, "
         "however, except a question mark (?) as a wildcard to represent any character for "
         "extensions.";
}

bool is_swallowed_type_key(char32_t character) {
  return std::u32string_view(U"*/:<>?\\|").find(character) != std::u32string_view::npos;
}

std::optional<std::string> pasted_file_type(std::string_view text) {
  constexpr std::string_view any_name = "*.";
  if (!text.starts_with(any_name)) return std::nullopt;
  text.remove_prefix(any_name.size());
  return std::string(text.substr(0, text.find_first_of("\r\n")));
}

std::string settled_file_type(std::string_view type) {
  return std::string(type.substr(type.starts_with('.') ? 1 : 0));
}

void FileTypeChoice::load(const SearchCriteria& search) {
  all_files_ = search.type_checked[0];
  for (int i = 0; i < user_type_boxes; ++i) {
    UserType& type = user_types_[i];
    type.text = search.user_types[i + 1];
    type.description = search.type_descriptions[i + 1];
    type.enabled = !type.text.empty();
    type.tick = type.enabled && search.type_checked[i + 1] ? Tick::ticked : Tick::unticked;
  }
  if (all_files_) chkFileType_Click(true);
}

void FileTypeChoice::chkFileType_Click(bool ticked) {
  all_files_ = ticked;
  for (UserType& type : user_types_) {
    type.enabled = !ticked && !type.text.empty();
    type.tick = ticked ? Tick::greyed : Tick::unticked;
  }
}

void FileTypeChoice::set_ticked(int index, bool ticked) {
  UserType& type = user_types_.at(index);
  if (type.enabled) type.tick = ticked ? Tick::ticked : Tick::unticked;
}

void FileTypeChoice::txtUserFileType_Change(int index, std::string text) {
  UserType& type = user_types_.at(index);
  type.text = std::move(text);
  type.description.clear();
  if (all_files_) return;
  type.enabled = !type.text.empty();
  if (!type.enabled) type.tick = Tick::unticked;
}

void FileTypeChoice::set_description(int index, std::string description) {
  user_types_.at(index).description = std::move(description);
}

void FileTypeChoice::accept(SearchCriteria& search) const {
  search.type_checked[0] = all_files_;
  for (int i = 0; i < user_type_boxes; ++i) {
    const UserType& type = user_types_[i];
    search.type_checked[i + 1] = type.tick != Tick::unticked;
    search.user_types[i + 1] = type.text;
    search.type_descriptions[i + 1] = type.description;
  }
}

}  // namespace tallowmere
