// A model of the size that a well-equipped printer has, for measuring.
#ifndef KV_TESTS_SUPPORT_LARGE_MODEL_H
#define KV_TESTS_SUPPORT_LARGE_MODEL_H

#include "tests/support/model_builder.h"

// 25 papers, 4 sources, 8 media, 16 resolutions, 32 rules, 60 MW rows, 12 and 16 settings, and a
// user's file with slots in use.
Model LargeModel();
// Writes a file, or a model's three, below the machine's root directory on disk; the .dat and the
// .cfg into the DOS directory given.
void PutOnDisk(const std::string &dosPath, const Bytes &bytes);
void InstallOnDisk(const Model &model, const std::string &base, const std::string &directory);

#endif
