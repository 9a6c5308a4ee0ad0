// SPDX-License-Identifier: Apache-2.0
// For tests by Wine that start programs of the machine (python3, openssl, mbpoll): Wine starts those, but
// does not pass their output through the pipes that it gives them. This program, under the name of one of
// them and ".exe", runs it with its output in files, and passes these on as they grow.
#include <windows.h>

#include <fcntl.h>
#include <io.h>

#include <cstdio>
#include <fstream>
#include <string>

namespace {

constexpr const char* Scratch = MCS_SCRATCH;  // a folder, as the machine names it

/// As Wine names it.
std::string Dos(const std::string& path) {
    return "Z:" + path;
}

/// For the shell: as it is, whatever it holds.
std::string Quoted(const std::string& word) {
    std::string quoted = "'";
    for (const char c : word)
        quoted += c == '\'' ? std::string("'\\''") : std::string(1, c);
    return quoted + "'";
}

std::string OwnName() {
    char path[MAX_PATH];
    const std::string file(path, ::GetModuleFileNameA(nullptr, path, MAX_PATH));
    const std::size_t begin = file.find_last_of("\\/") + 1;
    return file.substr(begin, file.find_last_of('.') - begin);
}

/// A file that grows, passed on to \a output.
class Forwarder {
  public:
    Forwarder(const std::string& file, std::FILE* output) : m_file(Dos(file)), m_output(output) {}
    ~Forwarder() { ::DeleteFileA(m_file.c_str()); }
    Forwarder(const Forwarder&) = delete;
    Forwarder& operator=(const Forwarder&) = delete;

    void Pass() {
        std::ifstream file(m_file, std::ios::binary);
        file.seekg(m_passed);
        char bytes[4096];
        while (file.read(bytes, sizeof bytes), file.gcount() > 0) {
            std::fwrite(bytes, 1, static_cast<std::size_t>(file.gcount()), m_output);
            m_passed += file.gcount();
        }
        std::fflush(m_output);
    }

  private:
    std::string m_file;
    std::FILE* m_output;
    std::streamoff m_passed = 0;
};

bool Start(const std::string& script) {
    std::string line = "sh " + script;
    STARTUPINFOA startup{};
    startup.cb = sizeof startup;
    PROCESS_INFORMATION process{};
    return ::CreateProcessA("Z:\\bin\\sh", &line[0], nullptr, nullptr, FALSE, 0, nullptr, nullptr, &startup,
                            &process) != 0;
}

}  // namespace

int main(int argc, char** argv) {
    ::_setmode(1, _O_BINARY);
    ::_setmode(2, _O_BINARY);
    const std::string base = std::string(Scratch) + "/" + std::to_string(::GetCurrentProcessId()) + "-" +
                             std::to_string(::GetTickCount());
    const std::string script = base + ".sh";
    std::string words = OwnName();
    for (int i = 1; i < argc; ++i)
        words += ' ' + Quoted(argv[i]);
    {
        // Whoever started this may kill it, which no program of the machine notices: so that one has its time
        // too.
        std::ofstream text(Dos(script), std::ios::binary);
        text << "timeout 200 /usr/bin/" << words << " > " << base << ".out 2> " << base
             << ".err < /dev/null\necho $? > " << base << ".code\nmv " << base << ".code " << base
             << ".end\n";
    }
    if (!Start(script)) {
        std::fprintf(stderr, "%s cannot be started (%lu)\n", words.c_str(), ::GetLastError());
        return 127;
    }
    const std::string end = Dos(base + ".end");
    Forwarder output(base + ".out", stdout);
    Forwarder errors(base + ".err", stderr);
    for (bool isOver = false; !isOver; ::Sleep(10)) {
        isOver = ::GetFileAttributesA(end.c_str()) != INVALID_FILE_ATTRIBUTES;
        output.Pass();
        errors.Pass();
    }
    int code = 0;
    std::ifstream(end) >> code;
    ::DeleteFileA(end.c_str());
    ::DeleteFileA(Dos(script).c_str());
    return code;
}
