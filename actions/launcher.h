#pragma once

#include <optional>
#include <string>

#include "actions/action_host.h"
#include "engine/code_page.h"
#include "engine/search_criteria.h"
#include "launch/key_script.h"
#include "win32/process.h"

namespace tallowmere {

/// Opens files in their applications, or runs them, and makes a few known editors find the text
/// that was searched for.
class Launcher {
 public:
  /// Both outlive the launcher. `page` is the one of the search's terms.
  Launcher(ActionHost& host, const CodePage& page) : host_(host), page_(page) {}

  /// Serves events while an editor is being worked: called again meanwhile, it notes the new file,
  /// gives the editor up and returns; the first call then opens the file. The window may be closed
  /// meanwhile, which ends the call.
  void cmdLaunch_Click(const std::string& path, const SearchCriteria& search, bool find_on_launch);

 private:
  struct Job {
    std::string path;
    FindRequest find;  ///< without text: nothing to find
  };

  void launch(const Job& job);
  void open_data_file(const Job& job, const std::string& application);
  /// Offers what the system may know for a file without a command of its own.
  void offer_system_program(const Job& job, const std::string& extension);
  void open_by_system(const Job& job, const std::string& application);
  void find_text(const Job& job, const win32::StartedProgram& program,
                 const std::string& application);
  void tell_failure(const SystemError& error, const std::string& file);
  /// Starts a program; returns false, after a message, when it has not started.
  bool start(win32::StartedProgram& program, const std::string& file,
             const std::string& command_line);

  ActionHost& host_;
  const CodePage& page_;
  bool busy_ = false;
  std::optional<Job> next_;
};

}  // namespace tallowmere
