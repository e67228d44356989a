// press PROGRAM
// Runs a set-up program and presses the button to go on of each page, as a user does who agrees with
// everything. Ends with the program's own status, or with 99 if it never ends.
#include <windows.h>

#include <cstdio>
#include <iterator>

namespace {

// Next, Install and Finish are one button, which is disabled where there is nothing to press.
BOOL CALLBACK Press(HWND window, LPARAM process) {
    DWORD owner = 0;
    GetWindowThreadProcessId(window, &owner);
    const HWND button = GetDlgItem(window, IDOK);
    if (owner != static_cast<DWORD>(process) || !button || !IsWindowVisible(button) ||
        !IsWindowEnabled(button))
        return TRUE;
    wchar_t label[64];
    GetWindowTextW(button, label, static_cast<int>(std::size(label)));
    std::printf("%ls\n", label);
    PostMessageW(window, WM_COMMAND, IDOK, 0);
    return TRUE;
}

}  // namespace

int wmain(int, wchar_t** arguments) {
    STARTUPINFOW start{};
    start.cb = sizeof start;
    PROCESS_INFORMATION program{};
    if (!CreateProcessW(nullptr, arguments[1], nullptr, nullptr, FALSE, 0, nullptr, nullptr, &start,
                        &program))
        return 98;
    for (int i = 0; i < 120; ++i) {
        if (WaitForSingleObject(program.hProcess, 1000) == WAIT_OBJECT_0) {
            DWORD status = 0;
            GetExitCodeProcess(program.hProcess, &status);
            return static_cast<int>(status);
        }
        EnumWindows(Press, static_cast<LPARAM>(program.dwProcessId));
    }
    TerminateProcess(program.hProcess, 99);
    return 99;
}
