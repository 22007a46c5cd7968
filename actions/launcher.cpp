#include "actions/launcher.h"

#include <utility>
#include <vector>

#include "actions/editor_stage.h"
#include "dialogs/frmCannotLaunch.h"
#include "launch/launch_command.h"
#include "launch/script_player.h"
#include "win32/association.h"
#include "win32/process.h"

namespace tallowmere {

namespace {

constexpr std::string_view cannot_launch = "Cannot Launch";
constexpr std::string_view not_associated =
    "The data file extension is not associated\r\nwith an application in the Registry.";

/// Takes the mark away on every way out.
class BusyMark {
 public:
  explicit BusyMark(bool& busy) : busy_(busy) { busy_ = true; }
  ~BusyMark() { busy_ = false; }
  BusyMark(const BusyMark&) = delete;
  BusyMark& operator=(const BusyMark&) = delete;

 private:
  bool& busy_;
};

}  // namespace

void Launcher::cmdLaunch_Click(const std::string& path, const SearchCriteria& search,
                               bool find_on_launch) {
  next_ = Job{path, find_on_launch ? find_request(search, page_) : FindRequest()};
  if (busy_) return;
  const BusyMark mark(busy_);
  do {
    const Job job = *std::exchange(next_, std::nullopt);
    launch(job);
  } while (next_ && host_.serve_events());
}

void Launcher::launch(const Job& job) {
  host_.status("");
  const std::string extension = file_extension(job.path);
  if (is_program(extension)) {
    win32::StartedProgram program;
    start(program, job.path, program_command_line(job.path));
    return;
  }
  const std::string command = win32::association_command(extension, true);
  if (command.empty()) {
    offer_system_program(job, extension);
  } else {
    open_data_file(job, program_path(command));
  }
}

/// `application` is without its extension.
void Launcher::open_data_file(const Job& job, const std::string& application) {
  win32::StartedProgram program;
  if (start(program, program_file(application), data_command_line(application, job.path))) {
    find_text(job, program, application);
  }
}

void Launcher::offer_system_program(const Job& job, const std::string& extension) {
  std::optional<std::string> application;
  if (!runs_when_opened(extension)) application = win32::system_association(extension);
  // Files that their own command starts run, too.
  if (!application || application->starts_with("%1") || application->starts_with("\"%1")) {
    host_.message(not_associated, cannot_launch);
    return;
  }
  const bool open = frmCannotLaunch(host_.window()).ask(not_associated);
  if (open) open_by_system(job, program_path(*application));
}

/// `application` is without its extension.
void Launcher::open_by_system(const Job& job, const std::string& application) {
  win32::StartedProgram program;
  const auto error = program.open(job.path, host_.window());
  if (!host_.serve_events()) return;  // the window was closed in that call
  if (!error) {
    find_text(job, program, application);
  } else if (error->code != ERROR_CANCELLED) {
    tell_failure(*error, job.path);
  }
}

/// `application` is without its extension.
void Launcher::find_text(const Job& job, const win32::StartedProgram& program,
                         const std::string& application) {
  const std::vector<ScriptStep> steps = build_script(app_base_name(application), job.find);
  if (steps.empty()) return;
  EditorStage stage({program, file_name(program_file(application)), file_name(job.path)},
                    [this] { return host_.serve_events() && !next_; });
  ScriptPlayer player(stage);
  const ScriptEnd end = player.play(steps);
  host_.status(script_status(end, player.title()));
}

bool Launcher::start(win32::StartedProgram& program, const std::string& file,
                     const std::string& command_line) {
  const auto error = program.start(file, command_line);
  if (error) tell_failure(*error, file);
  return !error;
}

void Launcher::tell_failure(const SystemError& error, const std::string& file) {
  host_.message(error.text + " - encountered while trying to START " + file, cannot_launch);
}

}  // namespace tallowmere
