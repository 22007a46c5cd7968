#pragma once

#include <cstddef>
#include <memory>
#include <optional>

#include "engine/byte_search.h"
#include "engine/file_system.h"
#include "engine/text_encoding.h"
#include "engine/unicode_search.h"

namespace tallowmere {

/// The text of an open file, a byte for each character: the file's own bytes, or those of the page
/// of a search that it is decoded into. Each thread has one, for one file after another.
class FileText {
 public:
  /// Without a search every file is read as it is. The search must outlive this object.
  explicit FileText(const UnicodeSearch* search);

  /// Begins with the file that is open in `file`, which is used until another one begins.
  void begin(FileReader& file);

  /// Reads on, as FileReader does. The first read decides the file's encoding and has to want more
  /// than an encoding_sample.
  std::optional<SystemError> read(Byte* into, std::size_t wanted, std::size_t& got);

  /// The encoding, once something was read; without a search always the code page, as also where
  /// that gives the same answer.
  TextEncoding encoding() const { return encoding_; }

  /// Whether the file matches, when the first read has shown that already; its text is undecoded
  /// then.
  std::optional<bool> answer() const { return answer_; }

 private:
  std::optional<SystemError> read_first(Byte* into, std::size_t wanted, std::size_t& got);
  std::optional<SystemError> read_in_place(Byte* into, std::size_t wanted, std::size_t& got);
  void put_back(const Byte* bytes, std::size_t count);
  std::optional<SystemError> read_decoded(Byte* into, std::size_t wanted, std::size_t& got);
  std::optional<SystemError> refill();

  const UnicodeSearch* search_;
  FileReader* file_ = nullptr;
  TextEncoding encoding_ = TextEncoding::code_page;
  bool first_ = false;
  bool in_place_ = true;  ///< what was read so far is its own text
  bool ended_ = false;
  std::optional<bool> answer_;

  // What was read and is not decoded yet.
  std::size_t capacity_ = 0;
  std::unique_ptr<Byte[]> bytes_;
  const Byte* begin_ = nullptr;
  const Byte* end_ = nullptr;
};

}  // namespace tallowmere
