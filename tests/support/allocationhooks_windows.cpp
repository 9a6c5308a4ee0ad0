// SPDX-License-Identifier: Apache-2.0
// Nothing takes the place of the C library's functions for all libraries there: each library has a table of
// its own with the functions that it takes from others, and in these tables they are replaced.
#include <tests/support/allocationcounter.h>

#include <windows.h>

#include <psapi.h>

#include <array>
#include <cstdint>
#include <cstring>
#include <cwchar>
#include <new>

namespace {

template <class Function>
Function FromLibrary(const char* name) {
    const FARPROC function = ::GetProcAddress(::GetModuleHandleW(L"msvcrt.dll"), name);
    return reinterpret_cast<Function>(reinterpret_cast<void*>(function));
}

void* CountedMalloc(std::size_t size) {
    static const auto allocate = FromLibrary<void* (*)(std::size_t)>("malloc");
    allocationcounter::OnAllocation();
    return allocate(size);
}

void* CountedCalloc(std::size_t count, std::size_t size) {
    static const auto allocate = FromLibrary<void* (*)(std::size_t, std::size_t)>("calloc");
    allocationcounter::OnAllocation();
    return allocate(count, size);
}

void* CountedRealloc(void* block, std::size_t size) {
    static const auto allocate = FromLibrary<void* (*)(void*, std::size_t)>("realloc");
    allocationcounter::OnAllocation();
    return allocate(block, size);
}

/// This program's, which may fail.
void* FailingNew(std::size_t size, const std::nothrow_t& tag) {
    return ::operator new(size, tag);
}

struct Replacement {
    const char* name;
    void* function;
};

const std::array<Replacement, 4> Replacements = {
    {{"malloc", reinterpret_cast<void*>(CountedMalloc)},
     {"calloc", reinterpret_cast<void*>(CountedCalloc)},
     {"realloc", reinterpret_cast<void*>(CountedRealloc)},
     {"_ZnwyRKSt9nothrow_t", reinterpret_cast<void*>(FailingNew)}}};

void* ReplacementOf(const char* name) {
    for (const Replacement& replacement : Replacements)
        if (std::strcmp(name, replacement.name) == 0) return replacement.function;
    return nullptr;
}

void Write(IMAGE_THUNK_DATA64* entry, void* function) {
    DWORD protection = 0;
    ::VirtualProtect(entry, sizeof *entry, PAGE_READWRITE, &protection);
    entry->u1.Function = reinterpret_cast<std::uintptr_t>(function);
    ::VirtualProtect(entry, sizeof *entry, protection, &protection);
}

/// A library as it lies in memory.
class Image {
  public:
    explicit Image(HMODULE module) : m_begin(reinterpret_cast<std::uint8_t*>(module)) {}

    void ReplaceImports() const {
        const auto* const headers = At<IMAGE_NT_HEADERS64>(At<IMAGE_DOS_HEADER>(0)->e_lfanew);
        const DWORD imports =
            headers->OptionalHeader.DataDirectory[IMAGE_DIRECTORY_ENTRY_IMPORT].VirtualAddress;
        if (imports == 0) return;
        for (const auto* library = At<IMAGE_IMPORT_DESCRIPTOR>(imports); library->Name != 0; ++library)
            ReplaceImportsFrom(*library);
    }

  private:
    template <class Part, class Offset>
    Part* At(Offset offset) const {
        return reinterpret_cast<Part*>(m_begin + offset);
    }

    void ReplaceImportsFrom(const IMAGE_IMPORT_DESCRIPTOR& library) const {
        const auto* name = At<IMAGE_THUNK_DATA64>(library.OriginalFirstThunk);
        auto* entry = At<IMAGE_THUNK_DATA64>(library.FirstThunk);
        for (; name->u1.AddressOfData != 0; ++name, ++entry) {
            if (IMAGE_SNAP_BY_ORDINAL64(name->u1.Ordinal)) continue;
            const auto* const import = At<IMAGE_IMPORT_BY_NAME>(name->u1.AddressOfData);
            void* const function = ReplacementOf(reinterpret_cast<const char*>(import->Name));
            if (function != nullptr) Write(entry, function);
        }
    }

    std::uint8_t* m_begin;
};

/// The system's libraries are not ours to count. The compiler's allocates what is local to a thread, and with
/// it the counter itself.
bool IsCounted(HMODULE module) {
    std::array<wchar_t, MAX_PATH> file{};
    std::array<wchar_t, MAX_PATH> system{};
    ::GetModuleFileNameW(module, file.data(), MAX_PATH);
    const UINT length = ::GetWindowsDirectoryW(system.data(), MAX_PATH);
    return ::_wcsnicmp(file.data(), system.data(), length) != 0 &&
           std::wcsstr(file.data(), L"libgcc_s") == nullptr &&
           std::wcsstr(file.data(), L"libwinpthread") == nullptr;
}

}  // namespace

void allocationcounter::InstallHooks() {
    std::array<HMODULE, 512> modules{};
    DWORD bytes = 0;
    if (::EnumProcessModules(::GetCurrentProcess(), modules.data(), sizeof modules, &bytes) == 0) return;
    for (std::size_t i = 0; i < modules.size() && i < bytes / sizeof(HMODULE); ++i)
        if (IsCounted(modules[i])) Image(modules[i]).ReplaceImports();
}
