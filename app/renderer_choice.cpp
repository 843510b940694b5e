#include "app/renderer_choice.hpp"

#include <QOffscreenSurface>
#include <QOpenGLContext>
#include <QOpenGLFunctions>
#include <QQuickWindow>
#include <QSGRendererInterface>

#include <algorithm>
#include <array>
#include <cctype>
#include <filesystem>
#include <string>
#include <system_error>

namespace zelvaine {

bool isSoftwareRasteriser(std::string_view rendererName)
{
    std::string name(rendererName);
    std::ranges::transform(name, name.begin(), [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
    // llvmpipe and softpipe are Mesa's Gallium rasterisers; swrast and "Software Rasterizer"
    // its classic one.
    constexpr std::array software{"llvmpipe", "softpipe", "swrast", "software rasterizer"};
    return std::ranges::any_of(software, [&](const char* word) { return name.find(word) != std::string::npos; });
}

namespace {

// Asks OpenGL who renders, on a throwaway context: a few milliseconds, once, at start.
std::string openGlRenderer()
{
    QOpenGLContext context;
    if (!context.create()) return {};
    QOffscreenSurface surface;
    surface.setFormat(context.format());
    surface.create();
    if (!surface.isValid() || !context.makeCurrent(&surface)) return {};
    const auto* name = reinterpret_cast<const char*>(context.functions()->glGetString(GL_RENDERER));
    std::string renderer = name ? name : "";
    context.doneCurrent();
    return renderer;
}

// Whether the system offers a graphics card's driver at all. Where none is, OpenGL can only be
// Mesa's software rasteriser, and asking it would load tens of megabytes of it for nothing.
bool hasGraphicsDevice()
{
#ifdef __linux__
    std::error_code error;
    for (const auto& entry : std::filesystem::directory_iterator("/dev/dri", error)) {
        if (entry.path().filename().string().starts_with("renderD")) return true;
    }
    return false;
#else
    return true;
#endif
}

} // namespace

bool chooseFastestRenderer()
{
    if (qEnvironmentVariableIsSet("QT_QUICK_BACKEND") || qEnvironmentVariableIsSet("QSG_RHI_BACKEND")) return false;
    const bool software = qEnvironmentVariableIntValue("LIBGL_ALWAYS_SOFTWARE") != 0 || !hasGraphicsDevice() ||
                          isSoftwareRasteriser(openGlRenderer());
    if (!software) return false;
    QQuickWindow::setGraphicsApi(QSGRendererInterface::Software);
    return true;
}

} // namespace zelvaine
