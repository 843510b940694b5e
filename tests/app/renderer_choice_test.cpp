#include "app/renderer_choice.hpp"

#include <gtest/gtest.h>

namespace zelvaine {
namespace {

// Renderer names as Mesa and the vendors report them: only Mesa's processor-bound rasterisers
// make the game switch to its software renderer.
TEST(RendererChoice, KnowsMesasSoftwareRasterisers)
{
    for (const char* name : {"llvmpipe (LLVM 15.0.6, 256 bits)", "softpipe", "Software Rasterizer", "Mesa X11 swrast",
                             "LLVMPIPE (LLVM 17.0.0, 128 bits)"}) {
        EXPECT_TRUE(isSoftwareRasteriser(name)) << name;
    }
    for (const char* name :
         {"Mesa Intel(R) UHD Graphics 620 (KBL GT2)", "AMD Radeon RX 6600 (navi23, LLVM 15.0.6, DRM 3.49)",
          "NVIDIA GeForce GTX 1060/PCIe/SSE2", "SVGA3D; build: RELEASE;", "virgl", ""}) {
        EXPECT_FALSE(isSoftwareRasteriser(name)) << name;
    }
}

} // namespace
} // namespace zelvaine
