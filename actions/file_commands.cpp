#include "actions/file_commands.h"

#include <algorithm>
#include <span>
#include <utility>
#include <vector>

#include "actions/background_operations.h"
#include "files/file_command_texts.h"
#include "files/file_names.h"
#include "win32/hourglass.h"
#include "win32/message_box.h"
#include "win32/message_loop.h"

namespace tallowmere {
namespace {

bool is_input(UINT message) {
  return (message >= WM_KEYFIRST && message <= WM_KEYLAST) ||
         (message >= WM_MOUSEFIRST && message <= WM_MOUSELAST);
}

/// `paths` are not empty.
SelectedFiles selected_files(std::span<const std::string> paths) {
  const std::string& first = paths.front();
  const std::size_t name = first.rfind(path_separator) + 1;
  return {first.substr(name), first.substr(0, name), paths.size()};
}

void tell_failure(HWND owner, FileCommand command, const std::string& text) {
  win32::message_box(owner, text, failure_title(command), win32::BoxIcon::exclamation);
}

}  // namespace

/// Shows the progress and asks over it.
class FileCommands::User : public BatchUser {
 public:
  User(frmProgress& progress, std::function<ReplaceAnswer(const ReplaceQuestion&)> ask)
      : progress_(progress), ask_(std::move(ask)) {}

  bool at_file(std::size_t index, std::size_t count, const std::string& path) override {
    text_ = progress_text(index, count, path);
    index_ = static_cast<double>(index);
    count_ = static_cast<double>(count);
    return progress_.update(text_, index_ / count_);
  }
  bool at_bytes(std::int64_t done, std::int64_t total) override {
    const double part = total > 0 ? static_cast<double>(done) / static_cast<double>(total) : 0;
    return progress_.update(text_, (index_ + part) / count_);
  }
  ReplaceAnswer ask_replace(const ReplaceQuestion& question) override {
    progress_.pause();
    const ReplaceAnswer answer = ask_(question);
    progress_.go_on();
    return answer;
  }

 private:
  frmProgress& progress_;
  std::function<ReplaceAnswer(const ReplaceQuestion&)> ask_;
  std::string text_;
  double index_ = 0;
  double count_ = 1;
};

FileCommands::FileCommands(HWND window, ResultList& list, const DialogContext& context,
                           FileCommandHost& host)
    : window_(window), list_(list), context_(context), host_(host) {}

void FileCommands::move_copy_dialog(FileCommand command, std::vector<std::string> paths) {
  if (paths.empty()) return;
  win32::WinFileOperations operations(window_);
  frmCopyMove& dialog = win32::made(frmCopyMove_, window_, context_);
  const auto request = dialog.ask(command, selected_files(paths), operations);
  if (!request) return;
  BatchOutcome outcome;
  work(progress_caption(command), [&](FileOperations& background, BatchUser& user) {
    outcome = transfer_files(paths, *request, background, user);
  });
  finish(window_, command, outcome);
}

void FileCommands::rename_dialog(const std::string& path) {
  frmRename& dialog = win32::made(frmRename_, window_);
  dialog.show(selected_files({&path, 1}).name, [this, &dialog, path](const std::string& name) {
    return rename(dialog.handle(), path, name);
  });
}

bool FileCommands::rename_file(const std::string& path, const std::string& new_name) {
  return rename(window_, path, new_name);
}

/// Renames a file; the message is over `owner` when that fails.
bool FileCommands::rename(HWND owner, const std::string& path, const std::string& new_name) {
  if (new_name == selected_files({&path, 1}).name) return true;
  if (const std::string fault = name_fault(new_name); !fault.empty()) {
    tell_failure(owner, FileCommand::rename, fault);
    return false;
  }
  win32::WinFileOperations operations(window_);
  const BatchOutcome outcome = tallowmere::rename_file(path, new_name, operations);
  finish(owner, FileCommand::rename, outcome);
  return outcome.done == 1;
}

void FileCommands::delete_files(std::vector<std::string> paths) {
  if (paths.empty()) return;
  std::vector<bool> recycle(paths.size());
  {
    const win32::Hourglass hourglass;
    win32::WinFileOperations operations(window_);
    for (std::size_t i = 0; i < paths.size(); ++i) recycle[i] = operations.can_recycle(paths[i]);
  }
  const auto unrecoverable = static_cast<std::size_t>(std::ranges::count(recycle, false));
  const std::string question = delete_question(selected_files(paths), unrecoverable);
  if (!confirm(question, delete_title, unrecoverable > 0)) return;
  BatchOutcome outcome;
  work(progress_caption(FileCommand::erase), [&](FileOperations& background, BatchUser& user) {
    outcome = tallowmere::delete_files(paths, recycle, background, user);
  });
  finish(window_, FileCommand::erase, outcome);
}

void FileCommands::remove_files(std::vector<std::string> paths) {
  if (paths.empty()) return;
  if (!confirm(remove_question(selected_files(paths)), remove_title, false)) return;
  BatchOutcome outcome;
  outcome.gone = std::move(paths);
  finish(window_, FileCommand::erase, outcome);
}

bool FileCommands::confirm(const std::string& question, std::string_view title,
                           bool for_good) const {
  const auto icon = for_good ? win32::BoxIcon::exclamation : win32::BoxIcon::question;
  const auto buttons = for_good ? win32::BoxButtons::no_yes : win32::BoxButtons::yes_no;
  return win32::message_box(window_, question, title, icon, buttons) == win32::BoxAnswer::yes;
}

std::optional<SystemError> FileCommands::fault_of(const std::string& path) {
  std::optional<SystemError> error;
  work("Looking for the File", [&](FileOperations& background, BatchUser&) {
    FileFacts facts;
    error = background.facts(path, facts);
  });
  return error;
}

std::optional<SystemError> FileCommands::replace(const std::string& source,
                                                 const std::string& target) {
  std::optional<SystemError> error;
  work("Saving", [&](FileOperations& background, BatchUser& user) {
    user.at_file(0, 1, target);
    error = background.copy(source, target, {true}, [&](std::int64_t done, std::int64_t total) {
      return user.at_bytes(done, total);
    });
  });
  return error;
}

void FileCommands::work(const std::string& caption,
                        const std::function<void(FileOperations&, BatchUser&)>& step) {
  const win32::Hourglass hourglass;
  frmProgress& progress = win32::made(frmProgress_, window_);
  win32::WinFileOperations operations(window_);
  BackgroundOperations background(operations, [this] { serve_events(); });
  User user(progress, [this](const ReplaceQuestion& question) { return ask_replace(question); });
  const frmProgress::Work working(progress, caption);
  step(background, user);
}

ReplaceAnswer FileCommands::ask_replace(const ReplaceQuestion& question) {
  if (!IsWindow(window_)) return ReplaceAnswer::cancel;
  const DateFormat format{context_.clock, context_.short_date};
  return win32::made(frmReplace_, window_, format).ask(question);
}

/// Serves events, but no input to the disabled main window, which may still have the focus.
void FileCommands::serve_events() {
  const bool running = win32::pump_pending([this](const MSG& message) {
    const bool to_main = message.hwnd == window_ || IsChild(window_, message.hwnd);
    return !to_main || !is_input(message.message);
  });
  if (!running) frmProgress_->cancel();
}

/// Any step may serve events, in which the window can be destroyed.
void FileCommands::finish(HWND owner, FileCommand command, const BatchOutcome& outcome) {
  const ListChange change = update_list(list_, outcome);
  const auto tell = [this](bool needed, const auto& step) {
    if (needed && IsWindow(window_)) step();
  };
  tell(change.rows_removed, [&] { host_.rows_removed(change.row_to_select); });
  tell(change.rows_refreshed, [&] { host_.rows_refreshed(); });
  tell(change.viewed != ViewedFile::untouched, [&] { host_.viewed_file_changed(change.viewed); });
  tell(change.records_changed, [&] { host_.records_changed(); });
  tell(!outcome.faults.empty(),
       [&] { tell_failure(owner, command, failure_text(command, outcome)); });
}

}  // namespace tallowmere
