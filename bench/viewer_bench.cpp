#include <benchmark/benchmark.h>

#include <algorithm>
#include <cstdio>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <memory>
#include <random>
#include <string>
#include <utility>

#include "engine/code_page.h"
#include "posix/posix_file_system.h"
#include "tests/support/fake_viewer.h"
#include "viewer/file_viewer.h"
#include "viewer/hit_navigation.h"

namespace tallowmere {
namespace {

constexpr std::int64_t file_size = std::int64_t{1} << 30;
constexpr std::size_t text_size = 1 << 22;

const CodePage& page() {
  static const CodePage value = CodePage::windows_1252();
  return value;
}

/// Returns text that looks like prose to a search: words of small letters, spaces, some capitals.
const std::string& prose() {
  static const std::string text = [] {
    std::mt19937 random(20240517);
    const std::string letters = "etaoinshrdlucmfwypvbgkjqxz";
    std::string made;
    while (made.size() < text_size) {
      for (unsigned left = 2 + random() % 8; left > 0; --left) {
        made += letters[std::min(random() % 26, random() % 26)];
      }
      made += random() % 9 == 0 ? ".\r\nThe wheelwrights " : " ";
    }
    made.resize(text_size);
    return made;
  }();
  return text;
}

/// What a benchmark has read.
struct Counts {
  std::int64_t bytes = 0;
  std::int64_t reads = 0;
};

/// A reader that counts.
class CountedReader : public FileReader {
 public:
  CountedReader(std::unique_ptr<FileReader> file, Counts& counts)
      : file_(std::move(file)), counts_(counts) {}

  std::optional<SystemError> open(const std::string& folder, std::string_view name) override {
    return file_->open(folder, name);
  }
  std::optional<SystemError> read(unsigned char* into, std::size_t wanted,
                                  std::size_t& got) override {
    auto error = file_->read(into, wanted, got);
    counts_.bytes += static_cast<std::int64_t>(got);
    ++counts_.reads;
    return error;
  }
  std::optional<SystemError> seek(std::int64_t position) override { return file_->seek(position); }
  void close() override { file_->close(); }

 private:
  std::unique_ptr<FileReader> file_;
  Counts& counts_;
};

class CountedFiles : public PosixFileSystem {
 public:
  mutable Counts counts;

  std::unique_ptr<FileReader> reader() const override {
    return std::make_unique<CountedReader>(PosixFileSystem::reader(), counts);
  }
};

/// A file that repeats the prose; reading costs a copy, as it does from a cache.
class RepeatedReader : public FileReader {
 public:
  std::optional<SystemError> open(const std::string&, std::string_view) override { return {}; }
  std::optional<SystemError> read(unsigned char* into, std::size_t wanted,
                                  std::size_t& got) override {
    got = static_cast<std::size_t>(
        std::min(static_cast<std::int64_t>(wanted), file_size - position_));
    for (std::size_t done = 0; done < got;) {
      const std::size_t offset = static_cast<std::size_t>(position_) % text_size;
      const std::size_t piece = std::min(got - done, text_size - offset);
      std::memcpy(into + done, prose().data() + offset, piece);
      done += piece;
      position_ += static_cast<std::int64_t>(piece);
    }
    return std::nullopt;
  }
  std::optional<SystemError> seek(std::int64_t position) override {
    position_ = position;
    return std::nullopt;
  }
  void close() override {}

 private:
  std::int64_t position_ = 0;
};

class RepeatedFile : public CountedFiles {
 public:
  std::optional<SystemError> facts(const std::string&, std::string_view,
                                   FileFacts& facts) const override {
    facts = {1, file_size};
    return std::nullopt;
  }
  std::unique_ptr<FileReader> reader() const override {
    return std::make_unique<CountedReader>(std::make_unique<RepeatedReader>(), counts);
  }
};

/// The prose as a file on the disk while the program runs.
class DiskFile {
 public:
  DiskFile() : folder_(with_separator(std::filesystem::temp_directory_path().string())) {
    std::ofstream file(folder_ + name, std::ios::binary);
    for (std::int64_t size = 0; size < file_size; size += text_size) file << prose();
  }
  ~DiskFile() { std::filesystem::remove(folder_ + name); }
  DiskFile(const DiskFile&) = delete;
  DiskFile& operator=(const DiskFile&) = delete;

  static constexpr char name[] = "tallowmere_viewer_bench.txt";
  const std::string& folder() const { return folder_; }

 private:
  std::string folder_;
};

const CriteriaInput kinds[] = {
    {"an absent phrase", search_phrase, true, 0, 0, false},
    {"an absent phrase", search_phrase, false, 0, 0, false},
    {"absentee committee", search_and, false, 0, 0, false},
    {"absentee committee chairman", search_or, false, 0, 0, false},
    {"\"absentee\" \"committee\" \"chairman\"", search_or, true, 0, 0, false},
    {"heelwright", search_or, false, 0, 0, false},  // occurs only inside words
    {"the absentee committee", search_near, false, 110, 110, false},
    {"the absentee committee", search_near, false, 110, 110, true},
};
const char* const names[] = {"phrase", "phrase any case", "and",  "or",
                             "parts",  "whole word",      "near", "near all"};

/// Makes one step through the whole file, which has no hit.
void find(benchmark::State& state, CountedFiles& files, const std::string& folder,
          const std::string& name, bool forward) {
  const CriteriaInput& input = kinds[state.range(0)];
  state.SetLabel(names[state.range(0)]);
  ResultList results;
  results.add_file_row(folder, name, {1, file_size});
  FakeFace face;
  FakeHost host;
  FileViewer viewer(results, files, face, host);
  HitNavigation navigation(viewer, face, host);
  SearchCriteria search;
  load_search_criteria(search, input);
  const HitFinder finder(search, page());
  for (auto _ : state) {
    viewer.viewfile(0);
    if (!forward) navigation.show_first_chunk();
    files.counts = {};
    const FindResult result = forward ? navigation.find_next(finder) : navigation.find_prev(finder);
    if (result != FindResult::not_found) state.SkipWithError("found, or no file");
  }
  state.SetBytesProcessed(state.iterations() * file_size);
  state.counters["reads_per_byte"] = static_cast<double>(files.counts.bytes) / file_size;
  state.counters["reads"] = static_cast<double>(files.counts.reads);
}

void BM_FindNextInMemory(benchmark::State& state) {
  RepeatedFile files;
  find(state, files, "/", "repeated", true);
}
BENCHMARK(BM_FindNextInMemory)->DenseRange(0, std::size(kinds) - 1)->UseRealTime();

void BM_FindPrevInMemory(benchmark::State& state) {
  RepeatedFile files;
  find(state, files, "/", "repeated", false);
}
BENCHMARK(BM_FindPrevInMemory)->DenseRange(0, std::size(kinds) - 1)->UseRealTime();

void BM_FindNextOnDisk(benchmark::State& state) {
  static const DiskFile disk;
  CountedFiles files;
  find(state, files, disk.folder(), DiskFile::name, true);
}
BENCHMARK(BM_FindNextOnDisk)->DenseRange(0, std::size(kinds) - 1)->UseRealTime();

}  // namespace
}  // namespace tallowmere

BENCHMARK_MAIN();
