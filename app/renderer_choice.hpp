#pragma once

#include <string_view>

namespace zelvaine {

// Whether an OpenGL renderer name is one of Mesa's software rasterisers. On such a machine (no
// graphics card: a virtual machine, a remote desktop) Qt Quick's own software renderer draws
// the board many times faster than OpenGL emulated on the processor.
bool isSoftwareRasteriser(std::string_view rendererName);

// Chooses Qt Quick's software renderer when the machine's OpenGL is a software rasteriser (no
// graphics device, LIBGL_ALWAYS_SOFTWARE, or OpenGL names one of Mesa's rasterisers), unless
// the player or the system already chose a renderer (QT_QUICK_BACKEND, QSG_RHI_BACKEND).
// Must run after the application object exists and before the first window is made. Returns
// whether it chose the software renderer.
bool chooseFastestRenderer();

} // namespace zelvaine
