#pragma once

/// The fast decoder of the word form; see CHuffmanEncoding::decode_run. Writes exactly `count` pixels.
const unsigned int* DecodeRun(const unsigned int* words, unsigned int word_count, unsigned char* out,
                              unsigned int count);
