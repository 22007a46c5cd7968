#include "tests/journeys/journey.h"

#include <winioctl.h>

#include <filesystem>
#include <stdexcept>

#include "tools/driver/text.h"

namespace tallowmere::driver {

namespace {

HANDLE create_file(const std::string& path) {
  std::filesystem::create_directories(std::filesystem::path(to_wide(path)).parent_path());
  const HANDLE file = CreateFileW(to_wide(path).c_str(), GENERIC_READ | GENERIC_WRITE, 0, nullptr,
                                  CREATE_ALWAYS, 0, nullptr);
  if (file == INVALID_HANDLE_VALUE) throw std::runtime_error("cannot write " + path);
  return file;
}

FILETIME local_time(int minutes) {
  const int in_day = 9 * 60 + 15 + minutes;
  const SYSTEMTIME time{
      2001, 5, 0, 20, static_cast<WORD>(in_day / 60), static_cast<WORD>(in_day % 60), 0, 0};
  SYSTEMTIME universal{};
  TzSpecificLocalTimeToSystemTime(nullptr, &time, &universal);
  FILETIME result{};
  SystemTimeToFileTime(&universal, &result);
  return result;
}

}  // namespace

Journey::Journey() {
  wchar_t temporary[MAX_PATH];
  GetTempPathW(MAX_PATH, temporary);
  const std::string name = testing::UnitTest::GetInstance()->current_test_info()->name();
  folder_ =
      from_wide(temporary) + "journey-" + name + "-" + std::to_string(GetCurrentProcessId()) + "\\";
  std::filesystem::create_directories(to_wide(folder_));
  settings().clear();
}

Journey::~Journey() {
  std::error_code ignored;
  std::filesystem::remove_all(to_wide(folder_), ignored);
}

void Journey::write(std::string_view name, std::string_view content, int minutes) const {
  const HANDLE file = create_file(folder_ + std::string(name));
  DWORD written = 0;
  WriteFile(file, content.data(), static_cast<DWORD>(content.size()), &written, nullptr);
  const FILETIME time = local_time(minutes);
  SetFileTime(file, nullptr, nullptr, &time);
  CloseHandle(file);
}

void Journey::write_sparse(std::string_view name, std::int64_t size) const {
  const HANDLE file = create_file(folder_ + std::string(name));
  DWORD returned = 0;
  DeviceIoControl(file, FSCTL_SET_SPARSE, nullptr, 0, nullptr, 0, &returned, nullptr);
  LARGE_INTEGER end{};
  end.QuadPart = size;
  SetFilePointerEx(file, end, nullptr, FILE_BEGIN);
  SetEndOfFile(file);
  CloseHandle(file);
}

void Journey::set_folder_settings() const {
  settings().set("path", folder_);
  // All files, subfolders, sorted by name, without sound.
  settings().set("checked", "YNNNNNNYNNYNNNNNYYN");
}

std::unique_ptr<MainWindow> Journey::start() const {
  return std::make_unique<MainWindow>(own_folder() + "Tallowmere32.exe");
}

}  // namespace tallowmere::driver
