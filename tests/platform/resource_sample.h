// The numbers of the texts in the sample library: macros only, for its script too.
#ifndef KV_TESTS_PLATFORM_RESOURCE_SAMPLE_H
#define KV_TESTS_PLATFORM_RESOURCE_SAMPLE_H

// Every block of 16 numbers holds other languages.
#define LANGUAGES_MANY 160    // the user's own, neutral, others of the same language, English
#define LANGUAGES_TWO 176     // neither English nor anything neutral
#define LANGUAGES_BRITISH 192 // English, but not that of the United States
#define TEXT_GLOSSY 208
#define TEXT_EMPTY 209
#define TEXT_LAST 223 // the last of its block

#endif
