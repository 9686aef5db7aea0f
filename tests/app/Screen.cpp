#include "app/Screen.h"

#include "app/Files.h"
#include "base/win32/Windows.h"

bool SaveScreen(const std::wstring& path) {
    const int width = GetSystemMetrics(SM_CXSCREEN);
    const int height = GetSystemMetrics(SM_CYSCREEN);
    BITMAPINFOHEADER info = {};
    info.biSize = sizeof info;
    info.biWidth = width;
    info.biHeight = height;
    info.biPlanes = 1;
    info.biBitCount = 24;
    // Each row takes a multiple of four bytes.
    info.biSizeImage = static_cast<DWORD>((width * 3 + 3) / 4 * 4 * height);

    const HDC screen = GetDC(nullptr);
    const HDC memory = CreateCompatibleDC(screen);
    void* pixels = nullptr;
    const HBITMAP bitmap =
        CreateDIBSection(screen, reinterpret_cast<const BITMAPINFO*>(&info), DIB_RGB_COLORS, &pixels, nullptr, 0);
    bool saved = false;
    if (bitmap) {
        const HGDIOBJ before = SelectObject(memory, bitmap);
        BitBlt(memory, 0, 0, width, height, screen, 0, 0, SRCCOPY);
        SelectObject(memory, before);
        BITMAPFILEHEADER header = {};
        header.bfType = 0x4D42; // "BM"
        header.bfOffBits = sizeof header + sizeof info;
        header.bfSize = header.bfOffBits + info.biSizeImage;
        std::string bytes(reinterpret_cast<const char*>(&header), sizeof header);
        bytes.append(reinterpret_cast<const char*>(&info), sizeof info);
        bytes.append(static_cast<const char*>(pixels), info.biSizeImage);
        saved = files::Write(path, bytes);
        DeleteObject(bitmap);
    }
    DeleteDC(memory);
    ReleaseDC(nullptr, screen);
    return saved;
}
