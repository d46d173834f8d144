// Reading dialog templates: two forms, fields aligned within the resource, every text and count
// checked against its end.
#include "platform/user/template.h"

#include "platform/resource/bytes.h"
#include "platform/resource/resource.h"

namespace kvp
{

static constexpr DWORD DS_SETFONT = 0x40;
static constexpr int MOST_ITEMS = 1000;
static constexpr SHORT MOST_UNITS = 2000; // several screens; the picture of more fills the memory

namespace
{
// Carries its error: what lies past the end reads as 0, and `whole` tells in the end.
struct Reader {
    Bytes bytes;
    size_t at = 0;
    bool whole = true;

    template <class T>
    T Take()
    {
        whole = whole && !Slice(bytes, at, sizeof(T)).empty();
        const T value = ValueAt<T>(bytes, at);
        at += sizeof(T);
        return value;
    }
    void AlignTo4() { at = (at + 3) & ~size_t{3}; }
    std::u16string Text()
    {
        std::u16string text;
        while (const auto c = Take<uint16_t>())
            text += static_cast<char16_t>(c);
        return text;
    }
    // A text, or a number behind 0xFFFF.
    std::u16string TextOrNumber(uint16_t &number)
    {
        number = 0;
        if (ValueAt<uint16_t>(bytes, at) != 0xFFFF)
            return Text();
        at += sizeof(uint16_t);
        number = Take<uint16_t>();
        return {};
    }
};
} // namespace

static std::u16string ClassOf(Reader &reader)
{
    static constexpr const char16_t *aNames[] = {u"button",  u"edit",      u"static",
                                                 u"listbox", u"scrollbar", u"combobox"};
    uint16_t atom;
    std::u16string name = reader.TextOrNumber(atom);
    if (atom >= 0x80 && atom - 0x80u < std::size(aNames))
        return aNames[atom - 0x80u];
    return name;
}

static TemplateItem ReadItem(Reader &reader, bool extended)
{
    TemplateItem item{};
    reader.AlignTo4();
    // The plain form: style, extended style. The other: help identifier, extended style, style.
    const DWORD first = reader.Take<DWORD>();
    reader.Take<DWORD>();
    item.style = extended ? reader.Take<DWORD>() : first;
    for (SHORT *field : {&item.x, &item.y, &item.cx, &item.cy})
        *field = reader.Take<SHORT>();
    item.id = extended ? static_cast<int>(reader.Take<DWORD>() & 0xFFFF) : reader.Take<WORD>();
    item.className = ClassOf(reader);
    item.text = reader.TextOrNumber(item.number);
    reader.at += reader.Take<WORD>(); // data for the control's making
    return item;
}

static void SkipFont(Reader &reader, bool extended)
{
    reader.Take<WORD>(); // size
    if (extended)
        reader.Take<DWORD>(); // weight, italic, character set
    reader.Text();
}

static std::optional<DialogTemplate> ReadTemplate(Bytes bytes)
{
    Reader reader{bytes};
    DialogTemplate shape{};
    const bool extended = ValueAt<uint32_t>(bytes, 0) == 0xFFFF0001;
    if (extended)
        reader.at = 12; // version, mark, help identifier, extended style
    shape.style = reader.Take<DWORD>();
    if (!extended)
        reader.Take<DWORD>(); // extended style
    const int items = reader.Take<WORD>();
    for (SHORT *field : {&shape.x, &shape.y, &shape.cx, &shape.cy})
        *field = reader.Take<SHORT>();
    uint16_t number;
    reader.TextOrNumber(number); // menu
    reader.TextOrNumber(number); // window class
    shape.caption = reader.Text();
    if (shape.style & DS_SETFONT)
        SkipFont(reader, extended);
    for (int i = 0; i < items && reader.whole && i < MOST_ITEMS; ++i)
        shape.items.push_back(ReadItem(reader, extended));
    if (!reader.whole || shape.cx < 0 || shape.cy < 0 || shape.cx > MOST_UNITS ||
        shape.cy > MOST_UNITS)
        return std::nullopt;
    return shape;
}

std::optional<DialogTemplate> LoadTemplate(HINSTANCE module, LPCSTR name)
{
    const ULONG_PTR id = reinterpret_cast<ULONG_PTR>(name);
    if (id > 0xFFFF)
        return std::nullopt;
    const Bytes bytes = FindResource(module, RESOURCE_DIALOG, static_cast<uint16_t>(id));
    if (bytes.empty())
        return std::nullopt;
    auto shape = ReadTemplate(bytes);
    if (shape)
        shape->module = module;
    return shape;
}

RECT PixelsOf(SHORT x, SHORT y, SHORT cx, SHORT cy)
{
    const int left = UnitsAcross(x), top = UnitsDown(y);
    return {left, top, left + UnitsAcross(cx), top + UnitsDown(cy)};
}

} // namespace kvp
