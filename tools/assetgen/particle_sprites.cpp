// Particle sprites: soft round glows with a hot core. The game draws them
// sometimes blended and sometimes only alpha-tested, so the colour itself
// fades to dark at the rim as the alpha does.
#include <cmath>

#include "assets.h"
#include "image.h"

namespace {

Image makeGlow(const Rgba& core, const Rgba& rim, float coreSize, float falloff) {
    const int S = 32;
    Image img(S, S);
    for (int y = 0; y < S; y++)
        for (int x = 0; x < S; x++) {
            float dx = (x + 0.5f - S / 2.0f) / (S / 2.0f), dy = (y + 0.5f - S / 2.0f) / (S / 2.0f);
            float d = std::sqrt(dx * dx + dy * dy);
            float glow = std::pow(clamp01(1 - d), falloff);
            float hot = std::exp(-d * d / (coreSize * coreSize));
            Rgba c = mix(rim, core, clamp01(hot));
            float light = clamp01(0.25f + glow * 1.4f + hot * 0.5f);
            img.at(x, y) = rgba(c.r * light, c.g * light, c.b * light, clamp01(glow * 1.6f));
        }
    return img;
}

Image makeSpark() {
    // A star-shaped glint: a round core with four thin rays.
    const int S = 32;
    Image img = makeGlow(rgba(1, 1, 1), rgba(0.6f, 0.8f, 1.0f), 0.18f, 2.2f);
    for (int y = 0; y < S; y++)
        for (int x = 0; x < S; x++) {
            float dx = std::fabs(x + 0.5f - S / 2.0f) / (S / 2.0f), dy = std::fabs(y + 0.5f - S / 2.0f) / (S / 2.0f);
            float ray =
                std::max(std::exp(-dy * dy / 0.004f) * clamp01(1 - dx), std::exp(-dx * dx / 0.004f) * clamp01(1 - dy));
            Rgba& p = img.at(x, y);
            p.r = clamp01(p.r + ray * 0.9f);
            p.g = clamp01(p.g + ray * 0.95f);
            p.b = clamp01(p.b + ray);
            p.a = clamp01(p.a + ray);
        }
    return img;
}

}  // namespace

bool makeParticleSprites(const std::string& textures) {
    bool ok =
        saveTga(textures + "/glow_cyan.tga", makeGlow(rgba(0.9f, 1, 1), rgba(0.1f, 0.6f, 1.0f), 0.30f, 1.1f), true);
    ok &= saveTga(textures + "/glow_violet.tga", makeGlow(rgba(1, 0.9f, 1), rgba(0.6f, 0.2f, 1.0f), 0.28f, 1.2f), true);
    ok &= saveTga(textures + "/glow_amber.tga", makeGlow(rgba(1, 1, 0.8f), rgba(1.0f, 0.45f, 0.1f), 0.28f, 1.2f), true);
    ok &= saveTga(textures + "/spark.tga", makeSpark(), true);
    return ok;
}
