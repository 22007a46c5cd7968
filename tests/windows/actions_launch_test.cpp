#include <windows.h>

#include <sddl.h>
#include <tlhelp32.h>

#include <gtest/gtest.h>

#include <filesystem>
#include <utility>

#include "actions/launcher.h"
#include "tests/windows/actions_support.h"
#include "tests/windows/dialogs_support.h"
#include "tests/windows/form1_fixture.h"
#include "tests/windows/temp_folder.h"
#include "win32/association.h"
#include "win32/controls.h"
#include "win32/other_windows.h"
#include "win32/text.h"

namespace tallowmere {
namespace {

constexpr wchar_t trace_variable[] = L"TALLOWMERE_TEST_TRACE";
constexpr wchar_t notepad_exe[] = L"C:\\windows\\notepad.exe";
constexpr char lost[] = "Find On Launch stopped: \"Notepad\" is no longer in front.";
using Range = std::pair<DWORD, DWORD>;
constexpr Range nothing(0, 0), needle(2, 8);

/// Associations of the extension "tallowmeretest" and of the class "TallowmereTest", and a folder
/// for files, one of them with a needle; all of it goes with the object.
class LaunchTest : public testing::Test {
 protected:
  LaunchTest() {
    SetEnvironmentVariableW(trace_variable, folder.native("trace").c_str());
    set_search("needle", false);
  }
  ~LaunchTest() override {
    end_children();
    SetEnvironmentVariableW(trace_variable, nullptr);
    for (const wchar_t* key : {L".tallowmeretest", L".wsf", L"TallowmereTest"})
      RegDeleteTreeW(HKEY_CLASSES_ROOT, key);
  }

  static void set_default(const wchar_t* key, const std::wstring& text, DWORD type,
                          std::size_t tail) {
    EXPECT_EQ(RegSetKeyValueW(HKEY_CLASSES_ROOT, key, nullptr, type, text.c_str(),
                              static_cast<DWORD>(text.size() * sizeof(wchar_t) + tail)),
              ERROR_SUCCESS);
  }
  static void set_class(const std::wstring& text, DWORD type = REG_SZ, std::size_t tail = 2) {
    set_default(L".tallowmeretest", text, type, tail);
  }
  static void set_command(const std::wstring& text, DWORD type = REG_SZ, std::size_t tail = 2) {
    set_default(L"TallowmereTest\\shell\\open\\command", text, type, tail);
  }
  static void associate(const std::wstring& program) {
    set_class(L"TallowmereTest");
    set_command(L"\"" + program + L"\" \"%1\"");
  }

  static std::wstring own_program() {
    wchar_t path[MAX_PATH];
    GetModuleFileNameW(nullptr, path, MAX_PATH);
    return path;
  }
  /// Copies a program below the test's folder; by default, into a folder with a space in its name.
  std::wstring install(const std::wstring& program,
                       const std::string& place = "My Apps\\notepad.exe") const {
    const std::filesystem::path copy = win32::wide(folder.path(place));
    std::filesystem::create_directories(copy.parent_path());
    std::filesystem::copy_file(program, copy);
    return copy;
  }

  /// The window of a Notepad, installed at `place`, that the user has opened a file with.
  HWND open_notepad(const std::string& place, const std::string& path) const {
    const std::string program = win32::narrow(install(notepad_exe, place));
    win32::StartedProgram process;
    EXPECT_FALSE(process.start(program, "\"" + program + "\" \"" + path + "\""));
    return wait_for_notepad(process.id());
  }
  /// The one with a file "launched..."; of any process when `id` is 0.
  static HWND wait_for_notepad(DWORD id = 0) {
    HWND found = nullptr;
    for (int tries = 0; found == nullptr && tries < 6000; ++tries, Sleep(10)) {
      win32::visit_other_windows([&](const win32::OtherWindow& window) {
        const bool fits = window.title.find("launched") != std::string::npos;
        if (fits && (id == 0 || id == window.process_id)) found = window.handle;
      });
    }
    return found;
  }
  static Range selection(HWND notepad) {
    Range range;
    SendMessageW(FindWindowExW(notepad, nullptr, L"Edit", nullptr), EM_GETSEL,
                 reinterpret_cast<WPARAM>(&range.first), reinterpret_cast<LPARAM>(&range.second));
    return range;
  }

  void set_search(const std::string& criteria, bool match_case) {
    CriteriaInput input;
    input.criteria = criteria;
    input.search_type = search_phrase;
    input.match_case = match_case;
    load_search_criteria(search, input);
  }
  void launch(const std::string& path, bool find = true) {
    launcher.cmdLaunch_Click(path, search, find);
  }

  static void end_children() {
    const HANDLE processes = CreateToolhelp32Snapshot(TH32CS_SNAPPROCESS, 0);
    PROCESSENTRY32W entry{};
    entry.dwSize = sizeof entry;
    for (BOOL more = Process32FirstW(processes, &entry); more;
         more = Process32NextW(processes, &entry)) {
      if (entry.th32ParentProcessID != GetCurrentProcessId()) continue;
      const HANDLE process =
          OpenProcess(PROCESS_TERMINATE | SYNCHRONIZE, FALSE, entry.th32ProcessID);
      TerminateProcess(process, 0);
      WaitForSingleObject(process, 5000);
      CloseHandle(process);
    }
    CloseHandle(processes);
  }

  TempFolder folder;
  const std::string file = folder.write("launched.tallowmeretest", "a needle");
  RecordingHost host;
  CodePage page = CodePage::windows_1252();
  SearchCriteria search;
  Launcher launcher{host, page};
};

TEST_F(LaunchTest, AssociationsAreReadWithCare) {
  const auto command = [] { return win32::association_command("tallowmeretest", true); };
  EXPECT_EQ(command(), "") << "no such extension";
  set_class(L"TallowmereTest", REG_SZ, 0);
  EXPECT_EQ(command(), "") << "no such class";
  const auto read = [&](const std::wstring& text, DWORD type, std::size_t tail) {
    set_command(text, type, tail);
    return command();
  };
  EXPECT_EQ(read(L"C:\\Apps\\é中.exe %1", REG_SZ, 2), "C:\\Apps\\é中.exe %1");
  EXPECT_EQ(read(std::wstring(1024, L'x'), REG_SZ, 2), "") << "longer than the buffer";
  EXPECT_EQ(read(L"ed.exe", REG_EXPAND_SZ, 2), "");
  EXPECT_EQ(read(L"ed.exe", REG_SZ, 0), "ed.exe") << "without final zeros";
  EXPECT_EQ(read(L"ed.exe", REG_SZ, 1), "ed.exe") << "half a character more";
  set_class(std::wstring(5000, L'c'));
  EXPECT_EQ(command(), "");
  set_class(L"TallowmereTest", REG_DWORD, 0);
  EXPECT_EQ(command(), "");
}

TEST_F(LaunchTest, WhatCannotStartIsTold) {
  launch(file);
  associate(L"C:\\no such folder\\gone.exe");
  launch(file);
  folder.write("run.bat", "echo run >" + folder.path("trace") + "\r\n");
  associate(win32::wide(folder.path("run.bat")));
  launch(file);
  launch(folder.path("gone.exe"));
  const std::string ends[] = {"in the Registry.", "to START C:\\no such folder\\gone.exe",
                              "to START " + folder.path("run.bat.exe"),
                              "to START " + folder.path("gone.exe")};
  ASSERT_EQ(host.messages.size(), std::size(ends));
  for (std::size_t i = 0; i < std::size(ends); ++i) {
    EXPECT_TRUE(host.messages[i].starts_with("Cannot Launch: ")) << host.messages[i];
    EXPECT_TRUE(host.messages[i].ends_with(ends[i])) << host.messages[i];
  }
  EXPECT_EQ(folder.read("trace"), "-") << "a command interpreter has run";
}

TEST_F(LaunchTest, NotepadFindsTheText) {
  associate(install(notepad_exe));
  std::filesystem::copy_file(own_program(), win32::wide(folder.path("My.exe")));
  const std::string wanted = "50% (Ab) [x]+{~}^\xE9";
  const std::string before = "line\r\n50% (ab) [x]+{~}^\xE9\r\n";
  const std::string path =
      folder.write("-launched %1 & ^b.tallowmeretest", before + wanted + "\r\nend\r\n");
  set_search("50% (Ab) [x]+{~}^é", true);
  int served = 0;
  host.meanwhile = [&served] { ++served; };
  launch(path);
  EXPECT_EQ(host.last_status, "");
  EXPECT_TRUE(host.messages.empty());
  EXPECT_GT(served, 30) << "events wait meanwhile";

  const HWND window = wait_for_notepad();
  EXPECT_EQ(folder.read("trace"), "-") << "a blank in a folder's name has started My.exe";
  const auto start = static_cast<DWORD>(before.size());
  EXPECT_EQ(selection(window), Range(start, start + static_cast<DWORD>(wanted.size())));
  EXPECT_EQ(SendMessageW(FindWindowExW(window, nullptr, L"Edit", nullptr), EM_GETMODIFY, 0, 0), 0);
  EXPECT_EQ(GetForegroundWindow(), window) << "the Find dialog is closed again";
  EXPECT_TRUE(IsZoomed(window));
}

TEST_F(LaunchTest, NothingIsTypedElsewhereWhenTheUserLeavesTheEditor) {
  associate(notepad_exe);
  host.meanwhile = [this] {
    const HWND dialog = FindWindowW(L"#32770", L"Find");
    if (dialog != nullptr && GetForegroundWindow() == dialog) SetForegroundWindow(host.window());
  };
  launch(file);
  EXPECT_EQ(host.last_status, lost);
  EXPECT_EQ(win32::Control(host.window()).text(), "");
}

/// Nobody may ask for the rights of the window's process any more.
void hide_rights(HWND window) {
  DWORD id = 0;
  GetWindowThreadProcessId(window, &id);
  const HANDLE process = OpenProcess(PROCESS_QUERY_INFORMATION, FALSE, id);
  HANDLE token = nullptr;
  EXPECT_TRUE(OpenProcessToken(process, WRITE_DAC, &token));
  PSECURITY_DESCRIPTOR nobody = nullptr;
  EXPECT_TRUE(ConvertStringSecurityDescriptorToSecurityDescriptorW(L"D:", SDDL_REVISION_1, &nobody,
                                                                   nullptr));
  EXPECT_TRUE(SetKernelObjectSecurity(token, DACL_SECURITY_INFORMATION, nobody));
  LocalFree(nobody);
  CloseHandle(token);
  CloseHandle(process);
}

TEST_F(LaunchTest, OnlyAnEditorWithTheFileGetsKeysWhenItIsHandedOver) {
  associate(install(own_program()));  // a "notepad" that ends at once
  const HWND running = open_notepad("a\\Notepad.exe", file);
  const HWND other_file =
      open_notepad("b\\notepad.exe", folder.write("launched too.tallowmeretest", "a needle"));
  const HWND other_program = open_notepad("c\\editor.exe", file);
  launch(file, false);
  EXPECT_EQ(selection(running), nothing) << "without Find On Launch";
  const std::string rights = folder.write("launched by another.tallowmeretest", "a needle");
  const HWND superior = open_notepad("d\\notepad.exe", rights);
  hide_rights(superior);
  launch(rights);
  EXPECT_EQ(host.last_status, "Find On Launch stopped: \"Notepad\" runs with higher rights.");
  EXPECT_EQ(selection(superior), nothing);
  launch(file);
  EXPECT_EQ(host.last_status, "");
  EXPECT_EQ(selection(running), needle);
  EXPECT_EQ(selection(other_file), nothing);
  EXPECT_EQ(selection(other_program), nothing);

  host.meanwhile = [running] {  // the user opens another file there
    if (FindWindowW(L"#32770", L"Find") != nullptr) SetWindowTextW(running, L"b.txt - Notepad");
  };
  launch(file);
  EXPECT_EQ(host.last_status, lost);
}

TEST_F(LaunchTest, WhatTheSystemOpensIsOfferedInTheBox) {
  set_class(L"TallowmereTest");
  set_command(L"\"%SystemRoot%\\notepad.exe\" \"%1\"", REG_EXPAND_SZ);
  const auto launch_and = [&](const std::function<void(HWND box)>& act) {
    const User user("Cannot Launch", act);
    launch(file);
  };
  launch_and([](HWND box) {
    EXPECT_EQ(LOWORD(SendMessageW(box, DM_GETDEFID, 0, 0)), IDOK);
    PostMessageW(GetDlgItem(box, IDOK), WM_KEYDOWN, VK_ESCAPE, 1);
  });
  EXPECT_EQ(FindWindowW(L"Notepad", nullptr), nullptr) << "Esc starts nothing";
  EXPECT_TRUE(IsWindowEnabled(host.window()));

  launch_and([](HWND box) { PostMessageW(GetDlgItem(box, IDOK), WM_KEYDOWN, VK_RETURN, 1); });
  EXPECT_EQ(host.last_status, "");
  EXPECT_EQ(selection(wait_for_notepad()), needle);
  EXPECT_TRUE(IsZoomed(wait_for_notepad()));
  EXPECT_TRUE(host.messages.empty());
  end_children();

  launch_and([this](HWND) { PostMessageW(host.window(), WM_CLOSE, 0, 0); });
  EXPECT_EQ(FindWindowW(L"Notepad", nullptr), nullptr) << "the box went with its owner";
}

TEST_F(LaunchTest, WhatRunsIsNotOfferedInTheBox) {
  set_default(L".wsf", L"TallowmereTest", REG_SZ, 2);
  set_command(L"%SystemRoot%\\notepad.exe %1", REG_EXPAND_SZ);
  Hand().work([&] { launch(folder.write("a.Wsf", "")); }, {});
  set_class(L"TallowmereTest");
  set_command(L"\"%1\" %*", REG_EXPAND_SZ);
  Hand().work([&] { launch(file); }, {});
  EXPECT_EQ(host.messages.size(), 2u);
}

TEST_F(LaunchTest, ALaunchMeanwhileGivesTheFirstUp) {
  associate(install(own_program()));
  host.meanwhile = [this] {
    host.meanwhile = {};
    launch("C:\\no association");
    EXPECT_TRUE(host.messages.empty()) << "it waits for the first to end";
  };
  launch(file);  // a "notepad" without a window
  EXPECT_EQ(host.last_status, "") << "it went on until the window had not come";
  EXPECT_EQ(host.messages.size(), 1u);
}

}  // namespace
}  // namespace tallowmere
