// The command of the tests: carries out a script, so that it prints what the test asks for at the pace it asks for
// and ends when asked to.
//
//     speaker SCRIPT [ARGUMENT...]      also: speaker /c ANYTHING, whose script is $SPEAKER_SCRIPT
//
// One instruction a line; a text may hold \n, \r, \\ and \xHH:
//     say TEXT          prints it
//     repeat N TEXT     prints it N times, in large blocks
//     make FILE         makes an empty file, to signal that this place is reached
//     wait FILE         goes on once there is such a file, and ends when its own script has gone
//     where             prints the current directory and the arguments after the script, a line each
//     read              prints "no input" once its standard input is read to the end
//     copy              prints its standard input
//     feed TEXT         prints it to its standard input
//     close             closes its standard output
//     child SCRIPT      starts a speaker that it does not wait for
//     probe HANDLE      prints whether it has a handle (on Windows) of that value: "open" or "closed"
//     leave SCRIPT      the same, as a program that lives on its own: it leaves the job, or the group, of this one
//     hold FILE         keeps the file open for itself alone until it ends
//     window TITLE      has a window with this title, out of sight, until it is closed
//     startup FILE      writes into the file how its window (on Windows) is to be shown: "hidden" or "normal"
//     exit N            ends with this code
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>
#include <thread>
#include <vector>
#ifdef _WIN32
#include <windows.h>

#include <fcntl.h>
#include <io.h>
#else
#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>
#endif

namespace {

std::string Unescaped(const std::string& text) {
    std::string result;
    for (size_t i = 0; i < text.size(); ++i) {
        if (text[i] != '\\' || i + 1 == text.size()) {
            result += text[i];
            continue;
        }
        const char kind = text[++i];
        if (kind == 'x') {
            result += static_cast<char>(std::stoi(text.substr(i + 1, 2), nullptr, 16));
            i += 2;
        } else {
            result += kind == 'n' ? '\n' : kind == 'r' ? '\r' : kind;
        }
    }
    return result;
}

void Print(const std::string& text) {
    std::fwrite(text.data(), 1, text.size(), stdout);
    std::fflush(stdout);
}

void Repeat(size_t times, const std::string& text) {
    const size_t group = text.size() < 65536 ? 65536 / text.size() : 1;
    std::string block;
    for (size_t i = 0; i < group; ++i) block += text;
    for (; times >= group; times -= group) Print(block);
    for (; times; --times) Print(text);
}

void ReadToTheEnd() {
    while (std::getchar() != EOF) {
    }
    Print("no input");
}

void Copy() {
    for (int c; (c = std::getchar()) != EOF;) std::putchar(c);
    std::fflush(stdout);
}

void WaitFor(const std::string& file, const std::string& script) {
    while (!std::filesystem::exists(file)) {
        if (!std::filesystem::exists(script)) std::exit(4);
        std::this_thread::sleep_for(std::chrono::milliseconds(2));
    }
}

#ifdef _WIN32
void StartChild(const std::string& program, const std::string& script, bool leaves = false) {
    std::string line = "\"" + program + "\" " + script;
    STARTUPINFOA startup = {};
    startup.cb = sizeof startup;
    PROCESS_INFORMATION started = {};
    CreateProcessA(nullptr, line.data(), nullptr, nullptr, TRUE, leaves ? CREATE_BREAKAWAY_FROM_JOB : 0, nullptr,
                   nullptr, &startup, &started);
}

void Hold(const std::string& file) { CreateFileA(file.c_str(), GENERIC_WRITE, 0, nullptr, OPEN_ALWAYS, 0, nullptr); }

bool IsOpen(const std::string& handle) {
    DWORD flags = 0;
    return GetHandleInformation(reinterpret_cast<HANDLE>(std::stoull(handle)), &flags);
}

void Feed(const std::string& text) {
    DWORD written = 0;
    WriteFile(GetStdHandle(STD_INPUT_HANDLE), text.data(), static_cast<DWORD>(text.size()), &written, nullptr);
}

void TellStartup(const std::string& file) {
    STARTUPINFOA startup = {};
    GetStartupInfoA(&startup);
    const bool shows = (startup.dwFlags & STARTF_USESHOWWINDOW) != 0;
    const std::string told = !shows                                 ? "any"
                             : startup.wShowWindow == SW_HIDE       ? "hidden"
                             : startup.wShowWindow == SW_SHOWNORMAL ? "normal"
                                                                    : "other";
    std::ofstream(file + ".new") << told;
    std::filesystem::rename(file + ".new", file); // complete as soon as it is there
}

LRESULT CALLBACK OnMessage(HWND window, UINT message, WPARAM wparam, LPARAM lparam) {
    if (message == WM_DESTROY) PostQuitMessage(0);
    return DefWindowProcA(window, message, wparam, lparam);
}

// Shown, it would come to the front at a moment of its own and take keys that are meant for the editor.
void OpenUntilClosed(const std::string& title) {
    WNDCLASSA definition = {};
    definition.lpfnWndProc = OnMessage;
    definition.lpszClassName = "Speaker";
    RegisterClassA(&definition);
    CreateWindowA("Speaker", title.c_str(), WS_OVERLAPPEDWINDOW, 0, 0, 200, 100, nullptr, nullptr, nullptr, nullptr);
    MSG message;
    while (GetMessageA(&message, nullptr, 0, 0) > 0) DispatchMessageA(&message);
}
#else
void StartChild(const std::string& program, const std::string& script, bool leaves = false) {
    const std::string start = leaves ? "setsid '" : "'";
    if (std::system((start + program + "' '" + script + "' &").c_str()) != 0) std::exit(3);
}

void Hold(const std::string& file) { flock(open(file.c_str(), O_WRONLY | O_CREAT | O_CLOEXEC, 0666), LOCK_EX); }

bool IsOpen(const std::string&) { return false; }
void TellStartup(const std::string&) {}
void Feed(const std::string& text) {
    if (write(STDIN_FILENO, text.data(), text.size()) < 0) std::exit(3);
}
void OpenUntilClosed(const std::string&) {}
#endif

struct Speaker {
    std::vector<std::string> arguments; // the program, the script and what follows
    std::string script;

    void Where() const {
        std::string text = std::filesystem::current_path().string() + "\n";
        for (size_t i = 2; i < arguments.size(); ++i) text += arguments[i] + "\n";
        Print(text);
    }

    void Do(const std::string& word, const std::string& rest) const {
        if (word == "say") Print(Unescaped(rest));
        if (word == "repeat") {
            const size_t blank = rest.find(' ');
            Repeat(std::stoull(rest), Unescaped(rest.substr(blank + 1)));
        }
        if (word == "make") std::ofstream(rest).flush();
        if (word == "wait") WaitFor(rest, script);
        if (word == "where") Where();
        if (word == "read") ReadToTheEnd();
        if (word == "copy") Copy();
        if (word == "feed") Feed(Unescaped(rest));
        if (word == "close") std::fclose(stdout);
        if (word == "child") StartChild(arguments[0], rest);
        if (word == "leave") StartChild(arguments[0], rest, true);
        if (word == "hold") Hold(rest);
        if (word == "probe") Print(IsOpen(rest) ? "open\n" : "closed\n");
        if (word == "startup") TellStartup(rest);
        if (word == "window") OpenUntilClosed(rest);
        if (word == "exit") std::exit(std::stoi(rest));
    }
};

} // namespace

int main(int count, char** values) {
#ifdef _WIN32
    _setmode(_fileno(stdout), _O_BINARY);
#endif
    if (count < 2) return 2;
    Speaker speaker{std::vector<std::string>(values, values + count), values[1]};
    const char* const told = std::getenv("SPEAKER_SCRIPT");
    if (speaker.script == "/c" && told) speaker.script = told;
    std::vector<std::string> lines;
    {
        std::ifstream script(speaker.script); // closed before anything is done, so that it can be deleted
        if (!script) return 2;
        for (std::string line; std::getline(script, line);) lines.push_back(line);
    }
    for (const std::string& line : lines) {
        const size_t blank = line.find(' ');
        speaker.Do(line.substr(0, blank), blank == std::string::npos ? "" : line.substr(blank + 1));
    }
    return 0;
}
