#include "chart/run_decoder.h"

#include "chart/plain_decoder.h"

const unsigned int* DecodeRun(const unsigned int* words, unsigned int word_count, unsigned char* out,
                              unsigned int count)
{
    return PlainDecodeRun(words, word_count, out, count);
}
