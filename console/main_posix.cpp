#include <fcntl.h>
#include <signal.h>
#include <unistd.h>

#include <atomic>
#include <cerrno>
#include <cstdlib>

#include "console/console_search.h"
#include "posix/posix_clock.h"
#include "posix/posix_file_system.h"

namespace {

// A signal handler reaches nothing but static storage.
std::atomic<bool> interrupt_asked{false};

extern "C" void ask_interrupt(int) {
  interrupt_asked = true;
}

void watch_signals() {
  struct sigaction action {};
  action.sa_handler = ask_interrupt;
  // A second one ends the program at once, whatever it is waiting for.
  action.sa_flags = SA_RESETHAND;
  sigaction(SIGINT, &action, nullptr);
  sigaction(SIGTERM, &action, nullptr);
  // write() itself then reports a closed pipe.
  signal(SIGPIPE, SIG_IGN);
}

tallowmere::console::Written write_all(int handle, std::string_view text) {
  using tallowmere::console::Written;
  while (!text.empty()) {
    const ssize_t count = write(handle, text.data(), text.size());
    if (count < 0 && errno == EINTR) continue;
    if (count < 0) return errno == EPIPE ? Written::closed : Written::failed;
    text.remove_prefix(static_cast<std::size_t>(count));
  }
  return Written::good;
}

}  // namespace

int main(int count, char** arguments) {
  using namespace tallowmere;
  watch_signals();
  const PosixFileSystem files;
  const PosixClock clock;
  const CodePage page = CodePage::windows_1252();
  console::Surroundings around{files,
                               clock,
                               page,
                               [](std::string_view text) { return write_all(STDOUT_FILENO, text); },
                               [](std::string_view text) { write_all(STDERR_FILENO, text); },
                               [] { return interrupt_asked.load(std::memory_order_relaxed); }};
  // Threads that hang in the system may still use what is here.
  std::_Exit(console::run({arguments + 1, arguments + count}, around));
}
