#include "actions/file_commands.h"

#include <algorithm>
#include <utility>
#include <vector>

#include "actions/background_operations.h"
#include "shell/file_command_texts.h"
#include "shell/file_names.h"
#include "win32/hourglass.h"
#include "win32/message_box.h"
#include "win32/message_loop.h"

namespace tallowmere {
namespace {

bool is_input(UINT message) {
  return (message >= WM_KEYFIRST && message <= WM_KEYLAST) ||
         (message >= WM_MOUSEFIRST && message <= WM_MOUSELAST);
}

/// Makes a dialog when it is first needed.
template <typename Dialog, typename... Arguments>
Dialog& made(std::unique_ptr<Dialog>& dialog, Arguments&&... arguments) {
  if (!dialog) dialog = std::make_unique<Dialog>(std::forward<Arguments>(arguments)...);
  return *dialog;
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

void FileCommands::move_copy_dialog(FileCommand command, std::span<const std::size_t> rows) {
  if (rows.empty()) return;
  win32::WinFileOperations operations(window_);
  frmCopyMove& dialog = made(frmCopyMove_, window_, context_);
  const auto request = dialog.ask(command, selected_files(rows), operations);
  if (!request) return;
  const BatchOutcome outcome = work(command, [&](FileOperations& background, BatchUser& user) {
    return transfer_files(list_, rows, *request, background, user);
  });
  finish(command, outcome);
}

void FileCommands::rename_dialog(std::size_t row) {
  made(frmRename_, window_).show(list_.record(row).filename, [this, row](const std::string& name) {
    return rename_file(row, name);
  });
}

bool FileCommands::rename_file(std::size_t row, const std::string& new_name) {
  if (new_name == list_.record(row).filename) return true;
  if (const std::string fault = name_fault(new_name); !fault.empty()) {
    tell_failure(FileCommand::rename, fault);
    return false;
  }
  win32::WinFileOperations operations(window_);
  const BatchOutcome outcome = tallowmere::rename_file(list_, row, new_name, operations);
  finish(FileCommand::rename, outcome);
  return outcome.done == 1;
}

void FileCommands::delete_files(std::span<const std::size_t> rows) {
  if (rows.empty()) return;
  std::vector<bool> recycle(rows.size());
  {
    const win32::Hourglass hourglass;
    win32::WinFileOperations operations(window_);
    for (std::size_t i = 0; i < rows.size(); ++i) {
      recycle[i] = operations.can_recycle(list_.indexed_filename(rows[i]));
    }
  }
  const auto unrecoverable = static_cast<std::size_t>(std::ranges::count(recycle, false));
  const std::string question = delete_question(selected_files(rows), unrecoverable);
  if (!confirm(question, delete_title, unrecoverable > 0)) return;
  const BatchOutcome outcome =
      work(FileCommand::erase, [&](FileOperations& background, BatchUser& user) {
        return tallowmere::delete_files(list_, rows, recycle, background, user);
      });
  finish(FileCommand::erase, outcome);
}

void FileCommands::remove_files(std::span<const std::size_t> rows) {
  if (rows.empty()) return;
  if (!confirm(remove_question(selected_files(rows)), remove_title, false)) return;
  finish(FileCommand::erase, remove_rows(list_, rows));
}

SelectedFiles FileCommands::selected_files(std::span<const std::size_t> rows) const {
  const FileRecord& first = list_.record(rows.front());
  return {first.filename, first.filepath, rows.size()};
}

bool FileCommands::confirm(const std::string& question, std::string_view title,
                           bool for_good) const {
  const auto icon = for_good ? win32::BoxIcon::exclamation : win32::BoxIcon::question;
  const auto buttons = for_good ? win32::BoxButtons::no_yes : win32::BoxButtons::yes_no;
  return win32::message_box(window_, question, title, icon, buttons) == win32::BoxAnswer::yes;
}

BatchOutcome FileCommands::work(
    FileCommand command, const std::function<BatchOutcome(FileOperations&, BatchUser&)>& batch) {
  const win32::Hourglass hourglass;
  frmProgress& progress = made(frmProgress_, window_);
  win32::WinFileOperations operations(window_);
  BackgroundOperations background(operations, [this] { serve_events(); });
  User user(progress, [this](const ReplaceQuestion& question) {
    const DateFormat format{context_.clock, context_.short_date};
    return made(frmReplace_, window_, format).ask(question);
  });
  progress.begin(progress_caption(command));
  BatchOutcome outcome = batch(background, user);
  progress.end();
  return outcome;
}

/// Leaves no input to the disabled main window, which may still have the focus.
void FileCommands::serve_events() {
  MSG message;
  while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) {
    if (message.message == WM_QUIT) {
      PostQuitMessage(static_cast<int>(message.wParam));
      frmProgress_->cancel();
      return;
    }
    const bool to_main = message.hwnd == window_ || IsChild(window_, message.hwnd);
    if (!to_main || !is_input(message.message)) win32::dispatch_message(message);
  }
}

void FileCommands::finish(FileCommand command, const BatchOutcome& outcome) {
  if (outcome.rows_removed) host_.rows_removed(outcome.row_to_select);
  if (outcome.rows_refreshed) host_.rows_refreshed();
  if (outcome.viewed != ViewedFile::untouched) host_.viewed_file_changed(outcome.viewed);
  if (outcome.records_changed) host_.records_changed();
  if (!outcome.faults.empty()) tell_failure(command, failure_text(command, outcome));
}

void FileCommands::tell_failure(FileCommand command, const std::string& text) const {
  // The rename dialog stays open below it.
  const HWND owner = IsWindowEnabled(window_) ? window_ : GetActiveWindow();
  win32::message_box(owner, text, failure_title(command), win32::BoxIcon::exclamation);
}

}  // namespace tallowmere
