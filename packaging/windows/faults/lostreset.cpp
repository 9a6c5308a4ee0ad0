// SPDX-License-Identifier: Apache-2.0
// Windows tells of a connection's reset by FD_CLOSE, also if it came while nobody asked to be told: as soon
// as somebody asks again. Wine does not, and whoever waits for it waits for ever. Ends with 0 where it is
// told, else with 1.
//
// x86_64-w64-mingw32-g++-posix lostreset.cpp -lws2_32 -o lostreset.exe && ../wine-run ./lostreset.exe
#include <winsock2.h>

#include <windows.h>

#include <cstdio>

namespace {

constexpr UINT Told = WM_USER + 1;

SOCKET Listen(sockaddr_in* address) {
    const SOCKET listener = socket(AF_INET, SOCK_STREAM, 0);
    int size = sizeof *address;
    address->sin_family = AF_INET;
    address->sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    bind(listener, reinterpret_cast<sockaddr*>(address), size);
    listen(listener, 1);
    getsockname(listener, reinterpret_cast<sockaddr*>(address), &size);
    return listener;
}

void Reset(SOCKET socket) {
    const linger hard{1, 0};
    setsockopt(socket, SOL_SOCKET, SO_LINGER, reinterpret_cast<const char*>(&hard), sizeof hard);
    closesocket(socket);
}

bool IsTold(HWND window, int event) {
    for (int waited = 0; waited < 3000; waited += 10) {
        MSG message;
        while (PeekMessageW(&message, window, Told, Told, PM_REMOVE))
            if (WSAGETSELECTEVENT(message.lParam) == event) return true;
        Sleep(10);
    }
    return false;
}

}  // namespace

int main() {
    WSADATA data;
    WSAStartup(MAKEWORD(2, 2), &data);
    const HWND window = CreateWindowW(L"STATIC", L"", 0, 0, 0, 0, 0, HWND_MESSAGE, nullptr, nullptr, nullptr);
    sockaddr_in address{};
    const SOCKET listener = Listen(&address);
    const SOCKET client = socket(AF_INET, SOCK_STREAM, 0);
    connect(client, reinterpret_cast<sockaddr*>(&address), sizeof address);
    const SOCKET server = accept(listener, nullptr, nullptr);

    constexpr long Events = FD_READ | FD_WRITE | FD_CLOSE;
    WSAAsyncSelect(client, window, Told, Events);
    if (!IsTold(window, FD_WRITE)) return 2;
    WSAAsyncSelect(client, window, 0, 0);
    Reset(server);
    Sleep(200);
    WSAAsyncSelect(client, window, Told, Events);
    const bool isTold = IsTold(window, FD_CLOSE);
    std::printf("the reset is %s\n", isTold ? "told" : "lost");
    return isTold ? 0 : 1;
}
