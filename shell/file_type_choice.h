#pragma once

#include <array>
#include <optional>
#include <string>
#include <string_view>

#include "engine/search_criteria.h"

namespace tallowmere {

enum class Tick { unticked, ticked, greyed };

inline constexpr int user_type_boxes = 6;

inline constexpr std::string_view invalid_file_type_title = "Invalid File Type";
std::string invalid_file_type_message();

/// True for the characters that never reach a file type box by typing: * / : < > ? \ |
bool is_swallowed_type_key(char32_t character);

/// The part of a pasted text that arrives in a file type box when the text begins with "*.": what
/// follows on that line. Nothing for any other text, which arrives as it is.
std::optional<std::string> pasted_file_type(std::string_view text);

/// A valid type as it is stored: a "." before the extension is not a part of it.
std::string settled_file_type(std::string_view type);

/// What the where-to-search dialog knows of file types: "All Files" and six typed ones.
class FileTypeChoice {
 public:
  /// One line of the dialog: a text box and its check box.
  struct UserType {
    std::string text;
    std::string description;  ///< the check box's caption
    Tick tick = Tick::unticked;
    bool enabled = false;  ///< the check box; the text box always is
  };

  void load(const SearchCriteria& search);

  bool all_files() const { return all_files_; }
  const UserType& user_type(int index) const { return user_types_.at(index); }

  /// "All Files" was clicked and is now ticked or not. Unticking it unticks every type.
  void chkFileType_Click(bool ticked);
  /// The user clicked an enabled check box.
  void set_ticked(int index, bool ticked);
  /// Text box `index` now holds `text`; its description no longer fits.
  void txtUserFileType_Change(int index, std::string text);
  /// The system's name of the typed type, looked up when the box is left.
  void set_description(int index, std::string description);

  /// Writes ticks (greyed counts as ticked), types and descriptions.
  void accept(SearchCriteria& search) const;

 private:
  bool all_files_ = false;
  std::array<UserType, user_type_boxes> user_types_;
};

}  // namespace tallowmere
