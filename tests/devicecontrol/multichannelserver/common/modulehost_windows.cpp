// SPDX-License-Identifier: Apache-2.0
// modulehost <library>: loads the module as Windows alone can, and takes its two entries by their plain
// names.
#include <windows.h>

#include <array>
#include <cstdio>

namespace {

using Create = void* (*)(const wchar_t*);
using Destroy = void (*)(void*);

template <class Function>
Function Entry(HMODULE module, const char* name) {
    return reinterpret_cast<Function>(reinterpret_cast<void*>(::GetProcAddress(module, name)));
}

int Complain(const char* what) {
    std::fprintf(stderr, "%s (%lu)\n", what, ::GetLastError());
    return 1;
}

}  // namespace

int main(int argc, char** argv) {
    if (argc != 2) return Complain("usage: modulehost <library>");
    std::array<wchar_t, MAX_PATH> path{};
    ::MultiByteToWideChar(CP_ACP, 0, argv[1], -1, path.data(), MAX_PATH);
    const HMODULE module = ::LoadLibraryW(path.data());
    if (module == nullptr) return Complain("the module is not loaded");
    const auto create = Entry<Create>(module, "ARCreateEx");
    const auto destroy = Entry<Destroy>(module, "ARDestroy");
    if (create == nullptr || destroy == nullptr) return Complain("an entry is missing");
    void* const first = create(L"-argument");
    void* const second = create(nullptr);
    if (first == nullptr || second == nullptr || first == second) return Complain("no instance is made");
    destroy(second);
    destroy(first);
    destroy(nullptr);
    return 0;
}
