#include "PngScreenshot.h"

#include "ui/win32/Win32.h"

#include <wincodec.h>

#include <filesystem>
#include <vector>

namespace {

// Releases a COM interface when it goes out of scope.
template <typename Interface> struct ComPtr {
    Interface* p = nullptr;
    ~ComPtr()
    {
        if (p)
            p->Release();
    }
    Interface* operator->() const { return p; }
    Interface** operator&() { return &p; }
};

// The window's pixels, top row first, 32 bits each (blue, green, red, unused).
std::vector<BYTE> WindowPixels(HWND window, int& width, int& height)
{
    RECT frame{};
    GetWindowRect(window, &frame);
    width = frame.right - frame.left;
    height = frame.bottom - frame.top;
    std::vector<BYTE> pixels;
    if (width <= 0 || height <= 0)
        return pixels;
    BITMAPINFO format{};
    format.bmiHeader.biSize = sizeof format.bmiHeader;
    format.bmiHeader.biWidth = width;
    format.bmiHeader.biHeight = -height;
    format.bmiHeader.biPlanes = 1;
    format.bmiHeader.biBitCount = 32;
    format.bmiHeader.biCompression = BI_RGB;
    void* bits = nullptr;
    HDC windowDc = GetWindowDC(window);
    HDC memoryDc = CreateCompatibleDC(windowDc);
    HBITMAP bitmap = CreateDIBSection(windowDc, &format, DIB_RGB_COLORS, &bits, nullptr, 0);
    if (bitmap) {
        HGDIOBJ previous = SelectObject(memoryDc, bitmap);
        // What the window has drawn, children included; PrintWindow where the copy fails.
        if (!BitBlt(memoryDc, 0, 0, width, height, windowDc, 0, 0, SRCCOPY))
            PrintWindow(window, memoryDc, 0);
        GdiFlush();
        const auto* first = static_cast<const BYTE*>(bits);
        pixels.assign(first, first + static_cast<std::size_t>(width) * height * 4);
        SelectObject(memoryDc, previous);
        DeleteObject(bitmap);
    }
    DeleteDC(memoryDc);
    ReleaseDC(window, windowDc);
    return pixels;
}

bool WritePng(const std::wstring& path, std::vector<BYTE>& pixels, int width, int height)
{
    ComPtr<IWICImagingFactory> factory;
    ComPtr<IWICStream> stream;
    ComPtr<IWICBitmapEncoder> encoder;
    ComPtr<IWICBitmapFrameEncode> frame;
    WICPixelFormatGUID format = GUID_WICPixelFormat32bppBGR;
    const UINT stride = static_cast<UINT>(width) * 4;
    return SUCCEEDED(CoCreateInstance(CLSID_WICImagingFactory, nullptr, CLSCTX_INPROC_SERVER, IID_IWICImagingFactory,
                                      reinterpret_cast<void**>(&factory))) &&
           SUCCEEDED(factory->CreateStream(&stream)) &&
           SUCCEEDED(stream->InitializeFromFilename(path.c_str(), GENERIC_WRITE)) &&
           SUCCEEDED(factory->CreateEncoder(GUID_ContainerFormatPng, nullptr, &encoder)) &&
           SUCCEEDED(encoder->Initialize(stream.p, WICBitmapEncoderNoCache)) &&
           SUCCEEDED(encoder->CreateNewFrame(&frame, nullptr)) && SUCCEEDED(frame->Initialize(nullptr)) &&
           SUCCEEDED(frame->SetSize(static_cast<UINT>(width), static_cast<UINT>(height))) &&
           SUCCEEDED(frame->SetPixelFormat(&format)) && format == GUID_WICPixelFormat32bppBGR &&
           SUCCEEDED(frame->WritePixels(static_cast<UINT>(height), stride, stride * static_cast<UINT>(height),
                                        pixels.data())) &&
           SUCCEEDED(frame->Commit()) && SUCCEEDED(encoder->Commit());
}

} // namespace

std::string WritePngScreenshot(DialogWindow window, const std::string& name)
{
    int width = 0;
    int height = 0;
    std::vector<BYTE> pixels = WindowPixels(window, width, height);
    if (pixels.empty())
        return {};
    const std::filesystem::path folder(TESSEL_SCREENSHOT_DIR);
    std::error_code ignored;
    std::filesystem::create_directories(folder, ignored);
    const std::filesystem::path file = folder / (name + ".png");
    return WritePng(file.wstring(), pixels, width, height) ? file.string() : std::string();
}
