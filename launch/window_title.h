#pragma once

#include <string_view>

namespace tallowmere {

/// How well a window's title fits the wanted one, from worst to best.
enum class TitleMatch { none, ends_with, begins_with, exact };

/// Compares a window's title with the wanted one, ignoring case.
TitleMatch match_title(std::string_view title, std::string_view wanted);

/// To which program a window belongs, compared with an editor that was started.
enum class WindowOwner {
  other_program,
  same_program,  ///< another process whose program file has the same name
  started        ///< the started process itself
};

/// Returns how well a window suits a key script that wants this title; `none`: it gets no keys. An
/// editor may pass the file on to a process of the same program that runs already: the window of
/// that process must name the file, too, apart from the wanted title and not inside another name.
TitleMatch match_editor_window(WindowOwner owner, std::string_view title, std::string_view wanted,
                               std::string_view file_name);

}  // namespace tallowmere
