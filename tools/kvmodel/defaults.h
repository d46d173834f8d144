// What a record holds where its source says nothing. Parsing starts from these, printing leaves
// out what equals them.
#ifndef KVMODEL_DEFAULTS_H
#define KVMODEL_DEFAULTS_H

#include "tools/kvmodel/model.h"

namespace kvm
{

// A paper with its position, size and everything else that follows from these: margins, limits
// equal to its own size, fed from every source.
PaperRecord DefaultPaper(const ModelFiles &model, size_t nPosition, int64_t nWidth,
                         int64_t nLength);
MedResRule DefaultRule();
// A settings record of a resolution and an ink, with the media, dot scale and rule word that the
// tables give for them. The tables of the model must be complete.
SettingsRecord DefaultSetting(const ModelFiles &model, size_t nPosition, int64_t nResolution,
                              int64_t nInk);
// The template for the source at a position; the model's source table must be complete.
DriverDevMode DefaultTemplate(const ModelFiles &model, int64_t nSource);
PrinterRecordHead DefaultPrinter();

// The first rule for a resolution and an ink, or null.
const MedResRule *RuleOf(const ModelFiles &model, int64_t nResolution, int64_t nInk);

} // namespace kvm

#endif
