// kvpicture: a drawing to a bitmap or an icon, while building.
#include <charconv>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <stdexcept>

#include <CLI/CLI.hpp>

#include "tools/kvpicture/picture.h"

namespace
{

namespace fs = std::filesystem;

constexpr int EXIT_GOOD = 0, EXIT_BAD = 1, EXIT_USAGE = 2;

struct Order {
    std::string source, target, background;
    std::vector<std::string> sizes, layers;
    bool gray = false, mirror = false;

    bool IsIcon() const { return fs::path(target).extension() == ".ico"; }
};

int Number(std::string_view text, int base)
{
    int value = -1;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value, base);
    return error == std::errc{} && end == text.data() + text.size() ? value : -1;
}

// "32x16"
std::pair<int, int> SizeOf(const std::string &text, int most)
{
    const size_t cross = text.find('x');
    if (cross == std::string::npos)
        throw std::runtime_error("size \"" + text + "\" is not WIDTHxHEIGHT");
    const int width = Number(text.substr(0, cross), 10),
              height = Number(text.substr(cross + 1), 10);
    if (width < 1 || height < 1 || width > most || height > most)
        throw std::runtime_error("size \"" + text + "\" is not within 1x1 and " +
                                 std::to_string(most) + "x" + std::to_string(most));
    return {width, height};
}

kvpic::Image Draw(const Order &order, const std::string &size)
{
    const auto [width, height] =
        SizeOf(size, order.IsIcon() ? kvpic::MOST_ICON_PIXELS : kvpic::MOST_PIXELS);
    kvpic::Image image = kvpic::Render(order.source, width, height, order.layers);
    if (order.gray)
        kvpic::MakeGray(image);
    if (order.mirror)
        kvpic::Mirror(image);
    if (order.IsIcon())
        return image;
    const int background = Number(order.background, 16);
    if (order.background.size() != 6 || background < 0)
        throw std::runtime_error("background \"" + order.background + "\" is not RRGGBB");
    kvpic::LayOn(image, static_cast<uint32_t>(background));
    return image;
}

std::vector<uint8_t> BytesOf(const Order &order)
{
    if (order.IsIcon()) {
        std::vector<kvpic::Image> images;
        for (const std::string &size : order.sizes)
            images.push_back(Draw(order, size));
        return kvpic::IcoBytes(images);
    }
    if (fs::path(order.target).extension() != ".bmp")
        throw std::runtime_error(order.target + ": neither .bmp nor .ico");
    if (order.sizes.size() != 1)
        throw std::runtime_error(order.target + ": a bitmap has one size");
    return kvpic::BmpBytes(Draw(order, order.sizes[0]));
}

int Run(const Order &order)
{
    const std::vector<uint8_t> bytes = BytesOf(order);
    std::ofstream stream(order.target, std::ios::binary | std::ios::trunc);
    stream.write(reinterpret_cast<const char *>(bytes.data()),
                 static_cast<std::streamsize>(bytes.size()));
    stream.close();
    if (stream.fail())
        throw std::runtime_error(order.target + ": cannot be written");
    return EXIT_GOOD;
}

int Command(int argc, char **argv)
{
    CLI::App app("Renders a drawing into a bitmap or an icon.");
    Order order{.source = {}, .target = {}, .background = "C0C0C0", .sizes = {}, .layers = {}};
    app.add_option("source", order.source, "DRAWING.svg")->required();
    app.add_option("sizes", order.sizes, "WIDTHxHEIGHT; several for an icon")->required();
    app.add_option("-o,--output", order.target, "PICTURE.bmp or PICTURE.ico")->required();
    app.add_option("-b,--background", order.background,
                   "RRGGBB behind a bitmap; default: the grey of dialogs");
    app.add_option("--layer", order.layers, "element to show alone, by its id; may be repeated")
        ->allow_extra_args(false);
    app.add_flag("--gray", order.gray, "without colours");
    app.add_flag("--mirror", order.mirror, "left and right exchanged");
    try {
        app.parse(argc, argv);
    } catch (const CLI::ParseError &error) {
        return app.exit(error) == 0 ? EXIT_GOOD : EXIT_USAGE;
    }
    return Run(order);
}

} // namespace

int main(int argc, char **argv)
{
    try {
        return Command(argc, argv);
    } catch (const std::exception &error) {
        std::cerr << error.what() << "\n";
        return EXIT_BAD;
    }
}
