#include <windows.h>

#include <sddl.h>
#include <tlhelp32.h>

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <utility>

#include "actions/launcher.h"
#include "tests/windows/actions_support.h"
#include "tests/windows/form1_fixture.h"
#include "win32/association.h"
#include "win32/controls.h"
#include "win32/other_windows.h"
#include "win32/text.h"

namespace tallowmere {
namespace {

/// Associations of the extension "tallowmeretest" and of the class "TallowmereTest", and a folder
/// for files; all of it goes with the object.
class LaunchTest : public testing::Test {
 protected:
  LaunchTest()
      : folder(std::filesystem::temp_directory_path() /
               ("launch-" + std::to_string(GetTickCount64()))) {
    std::filesystem::create_directories(folder / "My Apps");
    SetEnvironmentVariableW(trace_variable, trace().c_str());
  }

  ~LaunchTest() override {
    end_children();
    SetEnvironmentVariableW(trace_variable, nullptr);
    RegDeleteTreeW(HKEY_CLASSES_ROOT, L".tallowmeretest");
    RegDeleteTreeW(HKEY_CLASSES_ROOT, L".wsf");
    RegDeleteTreeW(HKEY_CLASSES_ROOT, L"TallowmereTest");
    std::error_code ignored;
    std::filesystem::remove_all(folder, ignored);
  }

  static void set_default(const std::wstring& key, DWORD type, const void* data, std::size_t size) {
    HKEY opened = nullptr;
    ASSERT_EQ(RegCreateKeyExW(HKEY_CLASSES_ROOT, key.c_str(), 0, nullptr, 0, KEY_SET_VALUE, nullptr,
                              &opened, nullptr),
              ERROR_SUCCESS);
    RegSetValueExW(opened, L"", 0, type, static_cast<const BYTE*>(data), static_cast<DWORD>(size));
    RegCloseKey(opened);
  }
  static void set_class(const std::wstring& text, DWORD type = REG_SZ, std::size_t tail = 2) {
    set_default(L".tallowmeretest", type, text.c_str(), text.size() * sizeof(wchar_t) + tail);
  }
  static void set_command(const std::wstring& text, DWORD type = REG_SZ, std::size_t tail = 2) {
    set_default(command_key, type, text.c_str(), text.size() * sizeof(wchar_t) + tail);
  }

  static void associate(const std::filesystem::path& program) {
    set_class(L"TallowmereTest");
    set_command(L"\"" + program.wstring() + L"\" \"%1\"");
  }

  static std::filesystem::path own_program() {
    wchar_t path[MAX_PATH];
    GetModuleFileNameW(nullptr, path, MAX_PATH);
    return path;
  }
  /// What a copy of the own program writes: its arguments.
  std::filesystem::path trace() const { return folder / "trace"; }

  std::string wait_for_trace() const {
    std::string text;
    for (int tries = 0; text.empty() && tries < 6000; ++tries, Sleep(10)) {
      std::ifstream notes(trace(), std::ios::binary);
      text.assign(std::istreambuf_iterator<char>(notes), {});
    }
    return text;
  }

  /// Below a folder of the test; without more words, one with a blank in its name.
  std::filesystem::path install(const std::filesystem::path& program,
                                const std::filesystem::path& place = "My Apps/notepad.exe") const {
    const std::filesystem::path copy = (folder / place).make_preferred();
    std::filesystem::create_directories(copy.parent_path());
    std::filesystem::copy_file(program, copy);
    return copy;
  }

  /// The window of a Notepad, installed at `place`, that the user has opened a file with.
  HWND open_notepad(const std::filesystem::path& place, const std::string& path) const {
    const std::string program = win32::narrow(install(notepad_exe, place).wstring());
    win32::StartedProgram process;
    EXPECT_FALSE(process.start(program, "\"" + program + "\" \"" + path + "\""));
    return wait_for_window([&process](const win32::OtherWindow& window) {
      return window.process_id == process.id() && window.title.ends_with("Notepad");
    });
  }

  static std::pair<DWORD, DWORD> edit_selection(HWND notepad) {
    return selection(FindWindowExW(notepad, nullptr, L"Edit", nullptr));
  }

  std::string write(const wchar_t* name, std::string_view content) {
    const std::filesystem::path path = folder / name;
    std::ofstream(path, std::ios::binary) << content;
    return win32::narrow(path.wstring());
  }

  void set_search(const std::string& criteria, SearchType type, bool match_case) {
    CriteriaInput input;
    input.criteria = criteria;
    input.search_type = type;
    input.match_case = match_case;
    load_search_criteria(search, input);
  }

  static HWND wait_for_window(const std::function<bool(const win32::OtherWindow&)>& fits) {
    HWND found = nullptr;
    for (int tries = 0; found == nullptr && tries < 6000; ++tries, Sleep(10)) {
      win32::visit_other_windows([&](const win32::OtherWindow& window) {
        if (fits(window)) found = window.handle;
      });
    }
    return found;
  }
  static HWND editor(std::string_view title) {
    return wait_for_window(
        [title](const win32::OtherWindow& window) { return window.title.starts_with(title); });
  }

  static std::pair<DWORD, DWORD> selection(HWND field) {
    std::pair<DWORD, DWORD> range;
    SendMessageW(field, EM_GETSEL, reinterpret_cast<WPARAM>(&range.first),
                 reinterpret_cast<LPARAM>(&range.second));
    return range;
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

  static constexpr const wchar_t* trace_variable = L"TALLOWMERE_TEST_TRACE";
  const std::string not_associated =
      "The data file extension is not associated\r\nwith an application in the Registry.";
  static constexpr const wchar_t* notepad_exe = L"C:\\windows\\notepad.exe";
  static constexpr const wchar_t* command_key = L"TallowmereTest\\shell\\open\\command";

  std::filesystem::path folder;
  RecordingHost host;
  CodePage page = CodePage::windows_1252();
  SearchCriteria search;
  Launcher launcher{host, page};
};

TEST_F(LaunchTest, AssociationsAreReadWithCare) {
  const auto command = [] { return win32::association_command("tallowmeretest", true); };
  EXPECT_EQ(command(), "") << "no such extension";
  set_class(L"TallowmereTest");
  EXPECT_EQ(command(), "") << "no such class";
  set_command(L"C:\\Apps\\é中.exe %1");
  EXPECT_EQ(command(), "C:\\Apps\\é中.exe %1");
  EXPECT_EQ(win32::association_command("tallowmeretest", false), "TallowmereTest");

  set_class(L"TallowmereTest", REG_SZ, 0);
  set_command(L"ed.exe", REG_SZ, 0);
  EXPECT_EQ(command(), "ed.exe") << "without final zeros";
  set_command(L"ed.exe", REG_SZ, 1);
  EXPECT_EQ(command(), "ed.exe") << "half a character more";
  set_command(L"ed.exe", REG_EXPAND_SZ);
  EXPECT_EQ(command(), "");
  set_command(L"", REG_SZ);
  EXPECT_EQ(command(), "");
  set_command(std::wstring(1023, L'x'));
  EXPECT_EQ(command().size(), 1023u);
  set_command(std::wstring(1024, L'x'));
  EXPECT_EQ(command(), "") << "longer than the buffer";

  set_command(L"ed.exe");
  for (const std::size_t length : {300u, 1024u, 5000u}) {
    set_class(std::wstring(length, L'c'));
    EXPECT_EQ(command(), "") << "a class of " << length << " characters";
  }
  set_class(L"TallowmereTest", REG_DWORD, 0);
  EXPECT_EQ(command(), "");
}

TEST_F(LaunchTest, WhatCannotStartIsTold) {
  const std::string path = write(L"launched.tallowmeretest", "text");
  launcher.cmdLaunch_Click(path, search, true);
  associate(L"C:\\no such folder\\gone.exe");
  launcher.cmdLaunch_Click(path, search, true);
  write(L"run.bat", "echo run >" + win32::narrow(trace().wstring()) + "\r\n");
  associate(folder / "run.bat");
  launcher.cmdLaunch_Click(path, search, true);
  launcher.cmdLaunch_Click(win32::narrow((folder / "gone.exe").wstring()), search, true);
  ASSERT_EQ(host.messages.size(), 4u);
  EXPECT_EQ(host.messages[0], "Cannot Launch: " + not_associated);
  const std::string trying = " - encountered while trying to START ";
  const std::string programs[] = {"C:\\no such folder\\gone.exe",
                                  win32::narrow((folder / "run.bat.exe").wstring()),
                                  win32::narrow((folder / "gone.exe").wstring())};
  for (int i = 0; i < 3; ++i) {
    const std::string& message = host.messages[static_cast<std::size_t>(i) + 1];
    EXPECT_TRUE(message.ends_with(trying + programs[i])) << message;
    EXPECT_TRUE(message.starts_with("Cannot Launch: ")) << message;
  }
  EXPECT_FALSE(exists(trace())) << "a command interpreter has run";
}

TEST_F(LaunchTest, NotepadFindsTheText) {
  associate(install(notepad_exe));
  std::filesystem::copy_file(own_program(), folder / "My.exe");
  const std::string needle = "50% (Ab) [x]+{~}^\xE9";
  const std::string before = "line\r\n50% (ab) [x]+{~}^\xE9\r\n";
  const std::string path =
      write(L"-launched %1 & ^b.tallowmeretest", before + needle + "\r\nend\r\n");
  set_search("50% (Ab) [x]+{~}^é", search_phrase, true);

  int served = 0;
  host.meanwhile = [&served] { ++served; };
  launcher.cmdLaunch_Click(path, search, true);
  EXPECT_EQ(host.last_status, "");
  EXPECT_EQ(host.messages, std::vector<std::string>());
  EXPECT_GT(served, 30) << "events wait meanwhile";

  const HWND window = editor("-launched %1 & ^b");
  ASSERT_NE(window, nullptr);
  EXPECT_FALSE(exists(trace())) << "a blank in a folder's name has started My.exe";
  const HWND field = FindWindowExW(window, nullptr, L"Edit", nullptr);
  const auto start = static_cast<DWORD>(before.size());
  EXPECT_EQ(selection(field), std::pair(start, start + static_cast<DWORD>(needle.size())));
  EXPECT_EQ(SendMessageW(field, EM_GETMODIFY, 0, 0), 0);
  EXPECT_EQ(GetForegroundWindow(), window) << "the Find dialog is closed again";
}

TEST_F(LaunchTest, WordPadFindsAWholeWordInItsCase) {
  associate(L"C:\\Program Files\\Windows NT\\Accessories\\wordpad.exe");
  const std::string path = write(L"launched.tallowmeretest", "dog\r\nDoghouse Dog\r\n");
  set_search("Dog house", search_and, true);
  launcher.cmdLaunch_Click(path, search, true);
  EXPECT_EQ(host.last_status, "");

  const HWND window = editor("launched");
  ASSERT_NE(window, nullptr);
  const HWND field = FindWindowExW(window, nullptr, L"RichEdit20W", nullptr);
  EXPECT_EQ(selection(field), (std::pair<DWORD, DWORD>(13, 16)));
  EXPECT_EQ(SendMessageW(field, EM_GETMODIFY, 0, 0), 0);
}

TEST_F(LaunchTest, WithoutFindOnLaunchOrTextOnlyTheApplicationStarts) {
  associate(notepad_exe);
  const std::string path = write(L"launched.tallowmeretest", "needle");
  set_search("needle", search_phrase, false);
  launcher.cmdLaunch_Click(path, search, false);
  const HWND window = editor("launched");
  ASSERT_NE(window, nullptr);
  EXPECT_TRUE(IsZoomed(window));
  EXPECT_EQ(edit_selection(window), (std::pair<DWORD, DWORD>(0, 0)));
}

TEST_F(LaunchTest, NothingIsTypedElsewhereWhenTheUserLeavesTheEditor) {
  associate(notepad_exe);
  const std::string path = write(L"launched.tallowmeretest", "needle");
  set_search("needle", search_phrase, false);
  host.meanwhile = [this] {
    const HWND dialog = FindWindowW(L"#32770", L"Find");
    if (dialog != nullptr && GetForegroundWindow() == dialog) SetForegroundWindow(host.window());
  };
  launcher.cmdLaunch_Click(path, search, true);
  EXPECT_EQ(host.last_status, "Find On Launch stopped: \"Notepad\" is no longer in front.");
  EXPECT_EQ(win32::Control(host.window()).text(), "");
}

TEST_F(LaunchTest, OnlyAnEditorWithTheFileGetsKeysWhenItIsHandedOver) {
  associate(install(own_program()));  // a "notepad" that ends at once
  const std::string path = write(L"launched.tallowmeretest", "a needle");
  const std::string other = write(L"other.tallowmeretest", "a needle");
  set_search("needle", search_phrase, false);
  const HWND running = open_notepad("a/Notepad.exe", path);
  const HWND other_file = open_notepad("b/notepad.exe", other);
  const HWND other_program = open_notepad("c/editor.exe", path);
  const std::pair<DWORD, DWORD> nothing(0, 0), needle(2, 8);

  launcher.cmdLaunch_Click(path, search, true);
  EXPECT_EQ(host.last_status, "");
  EXPECT_EQ(edit_selection(running), needle);
  EXPECT_EQ(edit_selection(other_file), nothing);
  EXPECT_EQ(edit_selection(other_program), nothing);

  host.meanwhile = [running] {  // the user opens another file there
    if (FindWindowW(L"#32770", L"Find") != nullptr) SetWindowTextW(running, L"b.txt - Notepad");
  };
  launcher.cmdLaunch_Click(path, search, true);
  EXPECT_EQ(host.last_status, "Find On Launch stopped: \"Notepad\" is no longer in front.");
}

TEST_F(LaunchTest, WhatTheSystemOpensIsOfferedInTheBox) {
  set_class(L"TallowmereTest");
  set_command(L"\"%SystemRoot%\\notepad.exe\" \"%1\"", REG_EXPAND_SZ);
  const std::string path = write(L"launched.tallowmeretest", "a needle");
  set_search("needle", search_phrase, false);
  const auto launch = [&](const std::function<void(HWND box)>& act) {
    const User user("Cannot Launch", act);
    launcher.cmdLaunch_Click(path, search, true);
  };
  launch([this](HWND box) {
    EXPECT_EQ(message_box_text(box), not_associated);
    EXPECT_EQ(LOWORD(SendMessageW(box, DM_GETDEFID, 0, 0)), IDOK);
    PostMessageW(GetDlgItem(box, IDOK), WM_KEYDOWN, VK_ESCAPE, 1);
  });
  EXPECT_EQ(FindWindowW(L"Notepad", nullptr), nullptr) << "Esc starts nothing";
  EXPECT_TRUE(IsWindowEnabled(host.window()));

  launch([](HWND box) { PostMessageW(GetDlgItem(box, IDOK), WM_KEYDOWN, VK_RETURN, 1); });
  EXPECT_EQ(host.last_status, "");
  EXPECT_EQ(edit_selection(editor("launched")), (std::pair<DWORD, DWORD>(2, 8)));
  EXPECT_TRUE(IsZoomed(editor("launched")));
  EXPECT_EQ(host.messages, std::vector<std::string>());
  end_children();

  launch([this](HWND) { PostMessageW(host.window(), WM_CLOSE, 0, 0); });
  EXPECT_EQ(FindWindowW(L"Notepad", nullptr), nullptr) << "the box went with its owner";
}

void CALLBACK cancel_box(HWND, UINT, UINT_PTR, DWORD) {
  PostMessageW(FindWindowW(L"#32770", L"Cannot Launch"), WM_CLOSE, 0, 0);
}

TEST_F(LaunchTest, WhatRunsIsNotOfferedInTheBox) {
  const UINT_PTR timer = SetTimer(nullptr, 0, 200, cancel_box);
  set_default(L".wsf", REG_SZ, L"TallowmereTest", 30);
  set_command(L"%SystemRoot%\\notepad.exe %1", REG_EXPAND_SZ);
  launcher.cmdLaunch_Click(write(L"a.Wsf", ""), search, true);
  set_class(L"TallowmereTest");
  set_command(L"\"%1\" %*", REG_EXPAND_SZ);
  launcher.cmdLaunch_Click(write(L"a.tallowmeretest", ""), search, true);
  KillTimer(nullptr, timer);
  EXPECT_EQ(host.messages.size(), 2u);
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

TEST_F(LaunchTest, AnEditorThatDoesNotTellItsRightsGetsNoKeys) {
  associate(install(own_program()));
  const std::string path = write(L"launched.tallowmeretest", "a needle");
  set_search("needle", search_phrase, false);
  const HWND running = open_notepad("a/notepad.exe", path);
  hide_rights(running);
  launcher.cmdLaunch_Click(path, search, true);
  EXPECT_EQ(host.last_status, "Find On Launch stopped: \"Notepad\" runs with higher rights.");
  EXPECT_EQ(edit_selection(running), (std::pair<DWORD, DWORD>(0, 0)));
}

TEST_F(LaunchTest, ALaunchMeanwhileGivesTheFirstUp) {
  associate(install(own_program()));
  const std::string path = write(L"-x %1 & y.tallowmeretest", "needle");
  set_search("needle", search_phrase, false);
  host.meanwhile = [this] {
    host.meanwhile = {};
    launcher.cmdLaunch_Click("C:\\no association", search, true);
    EXPECT_TRUE(host.messages.empty()) << "it waits for the first to end";
  };
  launcher.cmdLaunch_Click(path, search, true);  // a "notepad" without a window
  EXPECT_EQ(host.last_status, "") << "it went on until the window had not come";
  EXPECT_EQ(host.messages.size(), 1u);
  EXPECT_EQ(wait_for_trace(), path + "\n");
}

}  // namespace
}  // namespace tallowmere
