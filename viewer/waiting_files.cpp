#include "viewer/waiting_files.h"

#include <algorithm>
#include <chrono>
#include <cstddef>
#include <cstdint>
#include <new>
#include <system_error>
#include <utility>
#include <vector>

namespace tallowmere {

namespace {

using Call = CallThread::Call;
using Milliseconds = std::chrono::milliseconds;

/// A call that takes no longer serves no events.
constexpr Milliseconds quick_call{15};
constexpr Milliseconds interval{5};

class FactsCall : public Call {
 public:
  FactsCall(const FileSystem& files, const std::string& folder, std::string_view name)
      : files_(files), folder_(folder), name_(name) {}
  void make() override { error = files_.facts(folder_, name_, facts); }

  FileFacts facts;
  std::optional<SystemError> error;

 private:
  const FileSystem& files_;
  const std::string folder_;
  const std::string name_;
};

/// The calls of one reader, one after another. Closing needs no memory.
class ReaderCall : public Call {
 public:
  enum class Action { open, read, close };

  explicit ReaderCall(std::unique_ptr<FileReader> file) : file_(std::move(file)) {}
  void make() override {
    got = 0;
    error.reset();
    switch (action) {
      case Action::open:
        error = file_->open(folder, name);
        break;
      case Action::read:
        if (place) error = file_->seek(*std::exchange(place, std::nullopt));
        if (!error) error = file_->read(bytes.data(), bytes.size(), got);
        break;
      case Action::close:
        file_->close();
        break;
    }
  }

  Action action = Action::open;
  std::string folder;
  std::string name;
  std::optional<std::int64_t> place;  ///< where the next read begins, when not where the last ended
  std::vector<unsigned char> bytes;
  std::size_t got = 0;
  std::optional<SystemError> error;

 private:
  const std::unique_ptr<FileReader> file_;
};

}  // namespace

/// Makes the calls on a thread that is kept for the next one, and waits for them.
class WaitingFiles::Caller {
 public:
  Caller(const FileSystem& files, std::function<bool()> keep_waiting)
      : files_(files), keep_waiting_(std::move(keep_waiting)) {}

  void make(const std::shared_ptr<Call>& call) {
    std::unique_ptr<CallThread> thread = begin(call);
    if (!thread) return call->make();
    for (Milliseconds time = quick_call; !thread->made_within(time); time = interval) {
      if (!keep_waiting_()) throw GivenUp();
    }
    kept_ = std::move(thread);
  }

  /// Begins a call that nobody waits for; null where no thread can be started.
  std::unique_ptr<CallThread> start(const std::shared_ptr<Call>& call) { return begin(call); }
  /// Takes back a thread that has made its call.
  void keep(std::unique_ptr<CallThread> thread) {
    if (!kept_) kept_ = std::move(thread);
  }

  /// Makes a last call; if it is slow, it is left to the thread, and no events are served.
  void finish(const std::shared_ptr<Call>& call) {
    std::unique_ptr<CallThread> thread = begin(call);
    if (!thread) return call->make();
    if (thread->made_within(quick_call)) kept_ = std::move(thread);
  }

 private:
  /// Begins a call on a thread; null where no thread can be started.
  std::unique_ptr<CallThread> begin(const std::shared_ptr<Call>& call) {
    std::unique_ptr<CallThread> thread = std::move(kept_);
    try {
      if (!thread) thread = std::make_unique<CallThread>(files_);
    } catch (const std::system_error&) {
      return nullptr;
    }
    thread->begin(call);
    return thread;
  }

  const FileSystem& files_;
  const std::function<bool()> keep_waiting_;
  std::unique_ptr<CallThread> kept_;  ///< null during a call, also for what events do meanwhile
};

/// The call that reads a piece, from asking for the file's facts to closing it.
class WaitingFiles::PieceCall : public Call {
 public:
  PieceCall(const FileSystem& files, const std::string& folder, std::string_view name,
            std::int64_t position, std::int64_t length)
      : files_(files),
        folder_(folder),
        name_(name),
        position_(position),
        bytes_(static_cast<std::size_t>(length), '\0') {}

  void make() override {
    const auto reader = files_.reader();
    std::size_t got = 0;
    failed_ = files_.facts(folder_, name_, facts_) || reader->open(folder_, name_) ||
              reader->seek(position_ - 1) ||
              reader->read(reinterpret_cast<unsigned char*>(bytes_.data()), bytes_.size(), got);
    bytes_.resize(got);
  }

  const FileSystem& files_;
  const std::string folder_;
  const std::string name_;
  const std::int64_t position_;
  std::string bytes_;
  FileFacts facts_;
  bool failed_ = true;
};

WaitingFiles::PieceRead::PieceRead(Caller& caller, std::shared_ptr<PieceCall> call)
    : caller_(caller), call_(std::move(call)), thread_(caller_.start(call_)) {}

WaitingFiles::PieceRead::~PieceRead() = default;

bool WaitingFiles::PieceRead::done() {
  if (!thread_) return true;
  try {
    if (!thread_->made_within(Milliseconds(0))) return false;
  } catch (const std::exception&) {
    call_->failed_ = true;
  }
  caller_.keep(std::move(thread_));
  return true;
}

bool WaitingFiles::PieceRead::failed() const {
  return call_->failed_;
}

const FileFacts& WaitingFiles::PieceRead::facts() const {
  return call_->facts_;
}

std::string WaitingFiles::PieceRead::take_bytes() {
  return std::move(call_->bytes_);
}

class WaitingFiles::Reader : public FileReader {
 public:
  Reader(std::unique_ptr<FileReader> file, Caller& caller)
      : caller_(caller), call_(std::make_shared<ReaderCall>(std::move(file))) {}
  ~Reader() override { close(); }
  Reader(const Reader&) = delete;
  Reader& operator=(const Reader&) = delete;

  std::optional<SystemError> open(const std::string& folder, std::string_view name) override {
    call_->folder = folder;
    call_->name = name;
    return make(ReaderCall::Action::open)->error;
  }

  std::optional<SystemError> read(unsigned char* into, std::size_t wanted,
                                  std::size_t& got) override {
    call_->bytes.resize(wanted);
    const std::shared_ptr<ReaderCall> call = make(ReaderCall::Action::read);
    got = call->got;
    std::copy_n(call->bytes.begin(), got, into);
    return call->error;
  }

  /// Notes the position; the next read moves there.
  std::optional<SystemError> seek(std::int64_t position) override {
    call_->place = position;
    return std::nullopt;
  }

  void close() override {
    if (!call_) return;
    call_->action = ReaderCall::Action::close;
    try {
      caller_.finish(call_);
    } catch (const std::bad_alloc&) {
      // No memory for another thread: the file is closed here.
    }
  }

 private:
  /// Makes a call. One that is given up keeps the file, and this reader may be gone by then.
  std::shared_ptr<ReaderCall> make(ReaderCall::Action action) {
    const std::shared_ptr<ReaderCall> call = std::move(call_);
    call->action = action;
    caller_.make(call);
    return call_ = call;
  }

  Caller& caller_;
  std::shared_ptr<ReaderCall> call_;  ///< null after a call that did not come to its end
};

WaitingFiles::WaitingFiles(const FileSystem& files, std::function<bool()> keep_waiting)
    : files_(files), caller_(std::make_unique<Caller>(files, std::move(keep_waiting))) {}

WaitingFiles::~WaitingFiles() = default;

std::optional<SystemError> WaitingFiles::facts(const std::string& folder, std::string_view name,
                                               FileFacts& facts) const {
  const auto call = std::make_shared<FactsCall>(files_, folder, name);
  caller_->make(call);
  facts = call->facts;
  return call->error;
}

std::unique_ptr<WaitingFiles::PieceRead> WaitingFiles::begin_read(const std::string& folder,
                                                                  std::string_view name,
                                                                  std::int64_t position,
                                                                  std::int64_t length) const {
  auto call = std::make_shared<PieceCall>(files_, folder, name, position, length);
  return std::unique_ptr<PieceRead>(new PieceRead(*caller_, std::move(call)));
}

std::unique_ptr<FileReader> WaitingFiles::reader() const {
  return std::make_unique<Reader>(files_.reader(), *caller_);
}

}  // namespace tallowmere
