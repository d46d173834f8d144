// Drawings to the pictures of resource scripts: SVG in, BMP or ICO out.
#ifndef KV_TOOLS_PICTURE_H
#define KV_TOOLS_PICTURE_H

#include <cstdint>
#include <span>
#include <string>
#include <vector>

namespace kvpic
{

// 0xAARRGGBB, the top row first; colours are not multiplied by their alpha.
struct Image {
    int width = 0, height = 0;
    std::vector<uint32_t> pixels;
};

// The largest bitmap, and the largest icon that its format can hold.
constexpr int MOST_PIXELS = 1024, MOST_ICON_PIXELS = 256;

// The drawing in the middle of a picture of this size, as large as its shape allows. Throws
// std::runtime_error, naming the file, when it is missing or no SVG. When layers are named, only
// these elements of the drawing show, one over the other in the order given; one that the drawing
// lacks is an error.
Image Render(const std::string &file, int width, int height,
             std::span<const std::string> layers = {});

// Each of these works on a picture as it is.
void Mirror(Image &image); // left and right change places
void MakeGray(Image &image);
void LayOn(Image &image, uint32_t color); // 0xRRGGBB behind it: nothing is left transparent

// 24 bits a pixel; transparency is lost.
std::vector<uint8_t> BmpBytes(const Image &image);
// 24 bits a pixel and a mask: what is less than half opaque is not there.
std::vector<uint8_t> IcoBytes(std::span<const Image> images);

} // namespace kvpic

#endif
