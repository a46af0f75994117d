#include "audio/mirrored_memory.h"

#include <cassert>

#include <windows.h>

#include "audio/mirror_mapping.h"

namespace dunkman {

namespace {

// Placeholders came with Windows 10 1803; the program has to start without them.
using VirtualAlloc2Function = void*(WINAPI*)(HANDLE process, void* address, SIZE_T bytes, ULONG type,
                                             ULONG protection, void* parameters, ULONG parameterCount);
using MapViewOfFile3Function = void*(WINAPI*)(HANDLE section, HANDLE process, void* address, ULONG64 offset,
                                              SIZE_T bytes, ULONG type, ULONG protection, void* parameters,
                                              ULONG parameterCount);
constexpr DWORD reservePlaceholder = 0x00040000;
constexpr DWORD replacePlaceholder = 0x00004000;
constexpr DWORD preservePlaceholder = 0x00000002;

template <typename Function> Function resolve(const char* name) {
    const HMODULE module = GetModuleHandleW(L"kernelbase.dll");
    if (module == nullptr) {
        return nullptr;
    }
    return reinterpret_cast<Function>(reinterpret_cast<void (*)()>(GetProcAddress(module, name)));
}

class WindowsMirrorCalls : public MirrorCalls {
public:
    void* virtualAlloc2(std::size_t bytes) override {
        const auto function = resolve<VirtualAlloc2Function>("VirtualAlloc2");
        if (function == nullptr || resolve<MapViewOfFile3Function>("MapViewOfFile3") == nullptr) {
            return nullptr;
        }
        return function(nullptr, nullptr, bytes, MEM_RESERVE | reservePlaceholder, PAGE_NOACCESS, nullptr, 0);
    }
    bool virtualFreeSplit(void* base, std::size_t firstBytes) override {
        return VirtualFree(base, firstBytes, MEM_RELEASE | preservePlaceholder) != FALSE;
    }
    void virtualFree(void* placeholder) override { VirtualFree(placeholder, 0, MEM_RELEASE); }
    void* createFileMapping(std::size_t bytes) override {
        return CreateFileMappingW(INVALID_HANDLE_VALUE, nullptr, PAGE_READWRITE, 0, static_cast<DWORD>(bytes),
                                  nullptr);
    }
    void closeHandle(void* section) override { CloseHandle(section); }
    void* mapViewOfFile3(void* section, void* placeholder, std::size_t bytes) override {
        const auto function = resolve<MapViewOfFile3Function>("MapViewOfFile3");
        return function(section, nullptr, placeholder, 0, bytes, replacePlaceholder, PAGE_READWRITE, nullptr,
                        0);
    }
    void* probeFreeAddress(std::size_t bytes) override {
        void* const address = VirtualAlloc(nullptr, bytes, MEM_RESERVE, PAGE_NOACCESS);
        if (address != nullptr) {
            VirtualFree(address, 0, MEM_RELEASE);
        }
        return address;
    }
    void* mapViewOfFileEx(void* section, void* address, std::size_t bytes) override {
        return MapViewOfFileEx(section, FILE_MAP_ALL_ACCESS, 0, 0, bytes, address);
    }
    void unmapViewOfFileEx(void* view) override { UnmapViewOfFileEx(view, 0); }
    std::int32_t lastError() override { return HRESULT_FROM_WIN32(GetLastError()); }
};

} // namespace

CallResult MirroredMemory::allocate(std::uint32_t bytes) {
    assert(first == nullptr);
    WindowsMirrorCalls calls;
    MirrorViews views;
    const CallResult result = mapMirrored(calls, bytes, views);
    if (!result.failed()) {
        first = views.first;
        second = views.second;
        bytesOnce = bytes;
    }
    return result;
}

void MirroredMemory::release() {
    if (first != nullptr) {
        UnmapViewOfFileEx(first, 0);
        UnmapViewOfFileEx(second, 0);
    }
    first = nullptr;
    second = nullptr;
    bytesOnce = 0;
}

} // namespace dunkman
