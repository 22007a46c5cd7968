#include "shell/list_export.h"

#include <gtest/gtest.h>

#include "engine/unicode.h"
#include "tests/support/memory_files.h"

namespace tallowmere {
namespace {

const std::string mark = "\xEF\xBB\xBF";

std::string exported(const std::vector<FileRecord>& files, ListFormat format) {
  ResultList list;
  for (const FileRecord& file : files) list.add_file_row(file);
  return exported_list(list, format, FixedClock());
}

TEST(ListExport, PathsALineOrRowsOfCells) {
  const Ticks moment =
      FixedClock().start_of_day({2024, 3, 5}) + (7 * 60 + 8) * 60 * ticks_per_second;
  const std::vector<FileRecord> files = {{"b, 中.txt", moment, "C:\\docs\\", 1234567},
                                         {"a", 0, "\\\\server\\x\\", 5'000'000'000}};
  EXPECT_EQ(exported(files, ListFormat::text),
            mark + "C:\\docs\\b, 中.txt\r\n\\\\server\\x\\a\r\n");
  EXPECT_EQ(exported(files, ListFormat::csv),
            mark +
                "Name,Date,Size,Folder\r\n"
                "\"b, 中.txt\",2024-03-05 07:08,1234567,\"C:\\docs\\\"\r\n"
                "\"a\",,5000000000,\"\\\\server\\x\\\"\r\n");
}

TEST(ListExport, NoNameIsAFormulaOrBreaksTheFile) {
  const std::string headings = mark + "Name,Date,Size,Folder\r\n";
  const std::pair<std::string, std::string> cells[] = {
      {"=1+1", "'=1+1"},
      {"+a", "'+a"},
      {"-a", "'-a"},
      {"@a", "'@a"},
      {"\ta", "'\ta"},
      {"\ra", "'\ra"},
      {"a\"b\",=1", "a\"\"b\"\",=1"},
      {"\"=1\"", "\"\"=1\"\""},
      {" =1", " =1"},
      {"a\nb", "a\nb"},
      {"\xED\xA0\x80x\xFF", "\xEF\xBF\xBDx\xEF\xBF\xBD"}};
  for (const auto& [name, cell] : cells) {
    EXPECT_EQ(exported({{name, 0, "=f", 0}}, ListFormat::csv),
              headings + "\"" + cell + "\",,0,\"'=f\"\r\n");
  }
  const std::string hostile = exported({{"a\r\nb\xED\xB0\x80", 0, "/", 0}}, ListFormat::text);
  EXPECT_EQ(hostile, mark + "/a\xEF\xBF\xBD\xEF\xBF\xBD" + "b\xEF\xBF\xBD\r\n");
}

TEST(ListExport, TheExtensionDecides) {
  using enum ListFormat;
  EXPECT_EQ(list_format("C:\\x.CSV", text), csv);
  EXPECT_EQ(list_format("C:\\x.csv.txt", csv), text);
  EXPECT_EQ(list_format("C:\\csv", csv), csv);
  EXPECT_EQ(list_format("C:\\x.csv\\y", text), text);
}

}  // namespace
}  // namespace tallowmere
