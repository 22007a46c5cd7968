#include "engine/file_text.h"

#include <cassert>
#include <cstring>
#include <string_view>

#include "engine/text_decoder.h"
#include "engine/utf8_check.h"

namespace tallowmere {

namespace {

/// Bytes that a chunk of UTF-16 takes, roughly.
constexpr std::size_t least_capacity = std::size_t{1} << 17;

}  // namespace

FileText::FileText(const UnicodeSearch* search) : search_(search) {}

void FileText::begin(FileReader& file) {
  file_ = &file;
  encoding_ = TextEncoding::code_page;
  first_ = search_ != nullptr;
  in_place_ = true;
  ended_ = false;
  answer_.reset();
  begin_ = end_ = nullptr;
}

std::optional<SystemError> FileText::read(Byte* into, std::size_t wanted, std::size_t& got) {
  if (first_) return read_first(into, wanted, got);
  if (encoding_ == TextEncoding::code_page) return file_->read(into, wanted, got);
  if (in_place_) return read_in_place(into, wanted, got);
  return read_decoded(into, wanted, got);
}

std::optional<SystemError> FileText::read_first(Byte* into, std::size_t wanted, std::size_t& got) {
  assert(wanted > encoding_sample);
  first_ = false;
  if (auto error = file_->read(into, wanted, got)) return error;
  ended_ = got < wanted;
  const std::string_view text(reinterpret_cast<const char*>(into), got);
  const RawFilter& filter = search_->filter;
  // UTF-16 is recognised by its mark, of which no byte begins a character in UTF-8.
  const bool may_be_utf16 = got > 0 && into[0] >= 0xFE;
  if (!may_be_utf16 && filter.bytes_suffice()) return std::nullopt;
  if (ended_ && !may_be_utf16) answer_ = filter.answer_unless_utf16(text);
  if (answer_) return std::nullopt;
  encoding_ = TextEncoding::utf8;
  const std::size_t ascii = ascii_length(text);
  if (ascii == got) return std::nullopt;
  encoding_ = find_text_encoding(text);
  if (encoding_ == TextEncoding::code_page) return std::nullopt;
  if (ended_) answer_ = filter.answer(text, encoding_);
  if (answer_) return std::nullopt;
  const std::size_t done =
      ascii > 0 && encoding_ == TextEncoding::utf8 ? ascii : mark_length(encoding_, text);
  in_place_ = false;
  put_back(into + done, got - done);
  got = 0;
  if (ascii == 0) return read_decoded(into, wanted, got);
  const auto error = read_decoded(into + ascii, wanted - ascii, got);
  got += ascii;
  return error;
}

/// Reads a text that was ASCII so far; ASCII stays where it was read.
std::optional<SystemError> FileText::read_in_place(Byte* into, std::size_t wanted,
                                                   std::size_t& got) {
  if (auto error = file_->read(into, wanted, got)) return error;
  ended_ = got < wanted;
  const std::size_t ascii = ascii_length({reinterpret_cast<const char*>(into), got});
  if (ascii == got) return std::nullopt;
  in_place_ = false;
  put_back(into + ascii, got - ascii);
  const auto error = read_decoded(into + ascii, wanted - ascii, got);
  got += ascii;
  return error;
}

void FileText::put_back(const Byte* bytes, std::size_t count) {
  if (capacity_ < std::max(count, least_capacity)) {
    capacity_ = std::max(count, least_capacity);
    bytes_ = std::make_unique_for_overwrite<Byte[]>(capacity_);
  }
  std::memcpy(bytes_.get(), bytes, count);
  begin_ = bytes_.get();
  end_ = begin_ + count;
}

std::optional<SystemError> FileText::read_decoded(Byte* into, std::size_t wanted,
                                                  std::size_t& got) {
  DecodeSpan span{begin_, end_, into, into + wanted};
  while (true) {
    decode(span, encoding_, search_->page, ended_);
    begin_ = span.from;
    got = static_cast<std::size_t>(span.into - into);
    if (got == wanted || ended_) return std::nullopt;
    if (auto error = refill()) return error;
    span.from = begin_;
    span.from_end = end_;
  }
}

/// Reads on after the undecoded beginning of a character.
std::optional<SystemError> FileText::refill() {
  const auto left = static_cast<std::size_t>(end_ - begin_);
  std::memmove(bytes_.get(), begin_, left);
  std::size_t got = 0;
  auto error = file_->read(bytes_.get() + left, capacity_ - left, got);
  ended_ = got < capacity_ - left;
  begin_ = bytes_.get();
  end_ = begin_ + left + got;
  return error;
}

}  // namespace tallowmere
