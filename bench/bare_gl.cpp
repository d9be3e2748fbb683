// SPDX-License-Identifier: MIT
// What the explorer's export does, without the toolkit: the same reading, the same triangles, the same
// picture file, with nothing but OpenGL, GDI and the imaging component. The benchmarks compare the two as
// whole processes.
#include "common/surface_mesh.h"

#include <windows.h>

#include <GL/gl.h>
#include <GL/glu.h>
#include <cmath>
#include <cstddef>
#include <cstdio>
#include <cstdlib>
#include <exception>
#include <stdexcept>
#include <vector>
#include <wincodec.h>

namespace {

using namespace examples;

void require(bool condition, const char* what) {
    if (!condition) throw std::runtime_error(what);
}

/// A 32-bit bitmap that OpenGL draws into.
struct Canvas {
    int width, height;
    HDC dc = nullptr;
    unsigned char* bits = nullptr;

    Canvas(int w, int h) : width(w), height(h), dc(::CreateCompatibleDC(nullptr)) {
        BITMAPINFO info = {};
        info.bmiHeader.biSize = sizeof info.bmiHeader;
        info.bmiHeader.biWidth = width;
        info.bmiHeader.biHeight = height;
        info.bmiHeader.biPlanes = 1;
        info.bmiHeader.biBitCount = 32;
        void* memory = nullptr;
        HBITMAP bitmap = ::CreateDIBSection(dc, &info, DIB_RGB_COLORS, &memory, nullptr, 0);
        require(bitmap != nullptr, "no bitmap");
        bits = static_cast<unsigned char*>(memory);
        ::SelectObject(dc, bitmap);
        PIXELFORMATDESCRIPTOR format = {};
        format.nSize = sizeof format;
        format.nVersion = 1;
        format.dwFlags = PFD_DRAW_TO_BITMAP | PFD_SUPPORT_GDI | PFD_SUPPORT_OPENGL;
        format.cColorBits = 32;
        format.cDepthBits = 32;
        require(::SetPixelFormat(dc, ::ChoosePixelFormat(dc, &format), &format), "no pixel format");
        require(::wglMakeCurrent(dc, ::wglCreateContext(dc)), "no context");
    }
};

void setUp(const Canvas& canvas) {
    ::glViewport(0, 0, canvas.width, canvas.height);
    ::glMatrixMode(GL_PROJECTION);
    double fovy = std::atan(1 / 7.0) * 57.29577951308232 / 0.75;
    if (canvas.width < canvas.height) fovy *= static_cast<double>(canvas.height) / canvas.width;
    ::gluPerspective(fovy, static_cast<double>(canvas.width) / canvas.height, 0.1, 100);
    ::glMatrixMode(GL_MODELVIEW);
    ::glTranslated(0, 0, -7);
    ::glRotated(-62, 1, 0, 0);
    ::glRotated(-38, 0, 0, 1);
    ::glEnable(GL_DEPTH_TEST);
    ::glEnable(GL_LIGHTING);
    ::glEnable(GL_LIGHT0);
    ::glEnable(GL_COLOR_MATERIAL);
    ::glColorMaterial(GL_FRONT_AND_BACK, GL_AMBIENT_AND_DIFFUSE);
    const float position[] = {-0.85f, -0.2f, 1.0f, 1}, ambient[] = {0.4f, 0.4f, 0.4f, 1},
                emission[] = {0.1f, 0.1f, 0.1f, 1};
    const float black[] = {0, 0, 0, 1};
    ::glLightfv(GL_LIGHT0, GL_POSITION, position);
    ::glLightfv(GL_LIGHT0, GL_AMBIENT, ambient);
    ::glLightfv(GL_LIGHT0, GL_SPECULAR, black);
    ::glLightf(GL_LIGHT0, GL_LINEAR_ATTENUATION, 0.8f);
    ::glMaterialfv(GL_FRONT_AND_BACK, GL_EMISSION, emission);
    ::glClearColor(250 / 255.0f, 250 / 255.0f, 248 / 255.0f, 0);
    ::glClear(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT);
}

SurfaceMesh readMesh(const char* file) {
    Grid grid = readGrid(file);
    ColourRamp ramp = *ColourRamp::named(ColourRamp::names().front());
    return SurfaceMesh({grid, ramp, MeshExtents::inBall(grid, 0.60f)});
}

void draw(const SurfaceMesh& mesh) {
    const MeshVertex* first = mesh.vertices.data();
    ::glEnableClientState(GL_VERTEX_ARRAY);
    ::glEnableClientState(GL_NORMAL_ARRAY);
    ::glEnableClientState(GL_COLOR_ARRAY);
    ::glVertexPointer(3, GL_FLOAT, sizeof(MeshVertex), first->position);
    ::glNormalPointer(GL_BYTE, sizeof(MeshVertex), first->normal);
    ::glColorPointer(4, GL_UNSIGNED_BYTE, sizeof(MeshVertex), first->colour);
    ::glDrawElements(GL_TRIANGLES, static_cast<GLsizei>(mesh.indices.size()), GL_UNSIGNED_INT,
                     mesh.indices.data());
    ::glFinish();
}

void writePng(const Canvas& canvas, const char* file) {
    auto check = [](HRESULT result) { require(SUCCEEDED(result), "the picture cannot be written"); };
    IWICImagingFactory* factory = nullptr;
    IWICStream* stream = nullptr;
    IWICBitmapEncoder* encoder = nullptr;
    IWICBitmapFrameEncode* frame = nullptr;
    wchar_t name[MAX_PATH] = L"";
    ::MultiByteToWideChar(CP_ACP, 0, file, -1, name, MAX_PATH);
    check(::CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED));
    check(::CoCreateInstance(CLSID_WICImagingFactory, nullptr, CLSCTX_INPROC_SERVER, IID_IWICImagingFactory,
                             reinterpret_cast<void**>(&factory)));
    check(factory->CreateStream(&stream));
    check(stream->InitializeFromFilename(name, GENERIC_WRITE));
    check(factory->CreateEncoder(GUID_ContainerFormatPng, nullptr, &encoder));
    check(encoder->Initialize(stream, WICBitmapEncoderNoCache));
    check(encoder->CreateNewFrame(&frame, nullptr));
    check(frame->Initialize(nullptr));
    check(frame->SetSize(canvas.width, canvas.height));
    WICPixelFormatGUID format = GUID_WICPixelFormat24bppBGR;
    check(frame->SetPixelFormat(&format));
    // A DIB begins with its lowest row; its fourth byte is no transparency that a file should have.
    std::vector<unsigned char> packed(static_cast<std::size_t>(canvas.width) * 3);
    for (int y = canvas.height - 1; y >= 0; --y) {
        const unsigned char* pixel = canvas.bits + static_cast<std::size_t>(y) * canvas.width * 4;
        for (std::size_t i = 0; i < packed.size(); i += 3, pixel += 4) {
            packed[i] = pixel[0];
            packed[i + 1] = pixel[1];
            packed[i + 2] = pixel[2];
        }
        check(frame->WritePixels(1, canvas.width * 3, canvas.width * 3, packed.data()));
    }
    check(frame->Commit());
    check(encoder->Commit());
    frame->Release();
    encoder->Release();
    stream->Release(); // closes the file
    factory->Release();
}

} // namespace

int main(int argc, char** argv) {
    try {
        require(argc == 5, "bare_gl FILE PICTURE.png WIDTH HEIGHT");
        SurfaceMesh mesh = readMesh(argv[1]);
        Canvas canvas(std::atoi(argv[3]), std::atoi(argv[4]));
        setUp(canvas);
        draw(mesh);
        writePng(canvas, argv[2]);
        return 0;
    } catch (const std::exception& error) {
        std::fprintf(stderr, "bare_gl: %s\n", error.what());
        return 1;
    }
}
