// A model's structures and the bytes of its two files.
#include <algorithm>
#include <cstring>
#include <iterator>

#include <fmt/format.h>

#include "tools/kvmodel/append.h"
#include "tools/kvmodel/model.h"

namespace kvm
{
namespace
{

template <class Record>
uint16_t CountOf(const std::vector<Record> &records)
{
    return static_cast<uint16_t>(records.size());
}

// Takes records from the front of the bytes. The first part that is cut short is reported, and
// nothing more is read.
class Cursor
{
  public:
    Cursor(std::span<const uint8_t> bytes, Problems &problems) : bytes_(bytes), problems_(problems)
    {
    }
    template <class Record>
    void One(const char *lpszWhat, Record &record)
    {
        if (Reach(lpszWhat, sizeof(Record)))
            std::memcpy(&record, Take(sizeof(Record)), sizeof(Record));
    }
    template <class Record>
    void Many(const char *lpszWhat, std::vector<Record> &records, size_t nCount)
    {
        if (!Reach(lpszWhat, nCount * sizeof(Record)))
            return;
        records.resize(nCount);
        if (nCount > 0)
            std::memcpy(records.data(), Take(nCount * sizeof(Record)), nCount * sizeof(Record));
    }
    Bytes Rest()
    {
        return bGood_ ? Bytes(bytes_.begin() + static_cast<ptrdiff_t>(nAt_), bytes_.end())
                      : Bytes();
    }
    bool Good() const { return bGood_; }

  private:
    bool Reach(const char *lpszWhat, size_t cb)
    {
        if (bGood_ && cb > bytes_.size() - nAt_)
            problems_.push_back(
                {0, lpszWhat,
                 fmt::format("cut short: {} bytes wanted from offset {}, the file has {}", cb, nAt_,
                             bytes_.size())});
        bGood_ = bGood_ && cb <= bytes_.size() - nAt_;
        return bGood_;
    }
    const uint8_t *Take(size_t cb)
    {
        nAt_ += cb;
        return bytes_.data() + (nAt_ - cb);
    }

    std::span<const uint8_t> bytes_;
    Problems &problems_;
    size_t nAt_ = 0;
    bool bGood_ = true;
};

bool ReadDat(std::span<const uint8_t> dat, ModelFiles &model, Problems &problems)
{
    Cursor cursor(dat, problems);
    DatHeader &header = model.header;
    cursor.One("header of the .dat", header);
    cursor.Many("paper table", model.papers, header.wPaperCount);
    cursor.Many("source table", model.sources, header.wBinCount);
    cursor.Many("resolution-name table", model.resNames, header.wResNameCount);
    cursor.Many("media table", model.media, header.wMediaCount);
    cursor.Many("auxiliary table", model.aux, header.wAuxCount);
    cursor.Many("resolution table", model.resolutions, header.wResCount);
    cursor.Many("rule table", model.rules, header.wMedResCount);
    cursor.Many("MW table", model.mw, header.wMWCount);
    cursor.One("template", model.tmpl);
    cursor.One("printer record", model.printer);
    cursor.Many("printer record", model.printerTail, model.PrinterTailSize());
    model.datTrailer = cursor.Rest();
    header = {header.wDat0, header.wVersion, header.wDat2, header.wDat3, 0, 0, 0, 0, 0, 0, 0, 0};
    return cursor.Good();
}

bool ReadCfg(std::span<const uint8_t> cfg, ModelFiles &model, Problems &problems)
{
    Cursor cursor(cfg, problems);
    CfgHeader &header = model.cfg;
    cursor.One("header of the .cfg", header);
    cursor.Many("Automatic settings", model.automatic, header.wAutoCount);
    cursor.Many("predefined settings", model.presets, header.wPresetCount);
    model.cfgTrailer = cursor.Rest();
    header.wAutoCount = header.wPresetCount = 0;
    return cursor.Good();
}

} // namespace

Bytes DatBytes(const ModelFiles &model)
{
    DatHeader header = model.header;
    header.wPaperCount = CountOf(model.papers);
    header.wBinCount = CountOf(model.sources);
    header.wResNameCount = CountOf(model.resNames);
    header.wMediaCount = CountOf(model.media);
    header.wAuxCount = CountOf(model.aux);
    header.wResCount = CountOf(model.resolutions);
    header.wMedResCount = CountOf(model.rules);
    header.wMWCount = CountOf(model.mw);
    Bytes bytes;
    Append(bytes, header);
    Append(bytes, model.papers);
    Append(bytes, model.sources);
    Append(bytes, model.resNames);
    Append(bytes, model.media);
    Append(bytes, model.aux);
    Append(bytes, model.resolutions);
    Append(bytes, model.rules);
    Append(bytes, model.mw);
    Append(bytes, model.tmpl);
    Append(bytes, model.printer);
    Append(bytes, model.printerTail);
    Append(bytes, model.datTrailer);
    return bytes;
}

Bytes CfgBytes(const ModelFiles &model)
{
    CfgHeader header = model.cfg;
    header.wAutoCount = CountOf(model.automatic);
    header.wPresetCount = CountOf(model.presets);
    Bytes bytes;
    Append(bytes, header);
    Append(bytes, model.automatic);
    Append(bytes, model.presets);
    Append(bytes, model.cfgTrailer);
    return bytes;
}

bool ReadModel(std::span<const uint8_t> dat, std::span<const uint8_t> cfg, ModelFiles &model,
               Problems &datProblems, Problems &cfgProblems)
{
    model = {};
    const bool bDat = ReadDat(dat, model, datProblems);
    const bool bCfg = ReadCfg(cfg, model, cfgProblems);
    return bDat && bCfg;
}

} // namespace kvm
