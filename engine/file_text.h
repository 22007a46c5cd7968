#pragma once

#include <cstddef>
#include <memory>
#include <optional>

#include "engine/byte_search.h"
#include "engine/file_system.h"
#include "engine/text_encoding.h"
#include "engine/unicode_search.h"

namespace tallowmere {

/// The text of an open file, one byte for each character: the file's own bytes, or bytes of the
/// search's page into which it is decoded. Each thread has one, for one file after another.
class FileText {
 public:
  /// Decodes for `search`, which must outlive this object; null reads every file as it is.
  explicit FileText(const UnicodeSearch* search);

  /// Begins with the file that is open in `file`, which is used until another one begins.
  void begin(FileReader& file);

  /// Reads on, as FileReader does. The first read decides the file's encoding and must want more
  /// than encoding_sample bytes.
  std::optional<SystemError> read(Byte* into, std::size_t wanted, std::size_t& got);

  /// Returns the encoding, once something was read; it is the code page without a search, and where
  /// that gives the same answer.
  TextEncoding encoding() const { return encoding_; }

  /// Returns whether the file matches, when the first read has shown it already; the text is not
  /// decoded then.
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
