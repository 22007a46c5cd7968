#pragma once

#include <string>
#include <string_view>

#include "actions/action_host.h"
#include "actions/file_commands.h"
#include "engine/date_time.h"
#include "files/system_shell.h"
#include "results/result_list.h"

namespace tallowmere {

/// The commands of the menu "Mor&e": what the desktop does with a file, and the list saved as one.
/// Each serves events. A message box says what cannot be done.
class MoreCommands {
 public:
  /// All of them outlive the commands.
  MoreCommands(ActionHost& host, FileCommands& files, SystemShell& shell, const ResultList& list,
               const Clock& clock)
      : host_(host), files_(files), shell_(shell), list_(list), clock_(clock) {}

  void mnuOpenFolder_Click(const std::string& path);
  void mnuOpenWith_Click(const std::string& path);
  void mnuProperties_Click(const std::string& path);
  /// Saves all rows, in their order.
  void mnuSaveList_Click();

 private:
  using Result = std::optional<SystemError>;

  bool is_there(const std::string& path, std::string_view title);
  Result save(const std::string& path, std::string_view bytes);
  void tell(const Result& error, std::string_view doing, const std::string& path,
            std::string_view title, std::string_view advice = {});

  ActionHost& host_;
  FileCommands& files_;
  SystemShell& shell_;
  const ResultList& list_;
  const Clock& clock_;
};

}  // namespace tallowmere
