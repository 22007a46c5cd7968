#pragma once

#include <gtest/gtest.h>

#include <optional>
#include <string>
#include <string_view>
#include <utility>

#include "engine/unicode.h"
#include "results/result_list.h"
#include "tests/support/fake_viewer.h"
#include "tests/support/memory_files.h"
#include "viewer/chunk_hits.h"
#include "viewer/file_viewer.h"
#include "viewer/hit_marks.h"
#include "viewer/hit_navigation.h"

namespace tallowmere {

/// Encodes a text; surrogates alone make it invalid.
inline std::string encode(std::u32string_view text, TextEncoding encoding) {
  std::string result;
  for (const char32_t code : text) {
    if (encoding == TextEncoding::utf8 && code >= 0xD800 && code < 0xE000) {
      result += static_cast<char>(0x80 | (code >> 4 & 0x3F));
    } else if (encoding == TextEncoding::utf8) {
      append_utf8(result, code);
    } else {
      const bool pair = code > 0xFFFF;
      for (const char32_t unit : {pair ? 0xD7C0 + (code >> 10) : code, 0xDC00 + (code & 0x3FF)}) {
        const bool little = encoding == TextEncoding::utf16_le;
        result += static_cast<char>(little ? unit : unit >> 8);
        result += static_cast<char>(little ? unit >> 8 : unit);
        if (!pair) break;
      }
    }
  }
  return result;
}

/// A viewer that has opened a file, the second row of its list.
struct Viewing {
  CodePage page = CodePage::windows_1252();
  MemoryFiles files;
  ResultList results;
  FakeFace face;
  FakeHost host;
  SearchCriteria search;
  FileViewer viewer{results, files, face, host};
  HitNavigation navigation{viewer, face, host};
  std::optional<HitFinder> finder;

  explicit Viewing(std::string text, const CriteriaInput& input = {"hit"},
                   const std::string& name = "f.txt", bool unicode = false) {
    search.unicode_text = unicode;
    viewer.read_unicode_text(unicode, page);
    const auto& file = files.add("/" + name, std::move(text), ticks_per_second);
    results.add_file_row("/", "other", {});
    results.add_file_row("/", name, file.facts);
    load_search_criteria(search, input);
    finder.emplace(search, page);
    viewer.read_beside(bytes_beside(*finder));
    EXPECT_TRUE(viewer.viewfile(1));
  }

  FindResult find(bool forward = true) {
    return forward ? navigation.find_next(*finder) : navigation.find_prev(*finder);
  }
  ChunkResult load(std::int64_t start = 1, std::int64_t position = 1) {
    int line = 0;
    return viewer.load_text_chunk(start, position, line);
  }
  const Chunk& shown() const { return viewer.shown_chunk(); }
  std::int64_t hit_at() const { return shown().file_position(face.selected.start); }
};

}  // namespace tallowmere
