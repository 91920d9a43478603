#pragma once

#include <gtest/gtest.h>
#include <zlib.h>

#include <string>

namespace intake {

/// What gzip makes of a text, or deflate.
inline std::string packed(std::string text, bool gzip = true, int level = Z_BEST_SPEED) {
    constexpr int GZIP = 16;
    constexpr int MEMORY = 8;
    z_stream stream{};
    EXPECT_EQ(deflateInit2(&stream, level, Z_DEFLATED, (gzip ? GZIP : 0) + MAX_WBITS, MEMORY,
                           Z_DEFAULT_STRATEGY),
              Z_OK);
    std::string bytes(deflateBound(&stream, text.size()), '\0');
    stream.next_in = reinterpret_cast<Bytef*>(text.data());
    stream.avail_in = static_cast<uInt>(text.size());
    stream.next_out = reinterpret_cast<Bytef*>(bytes.data());
    stream.avail_out = static_cast<uInt>(bytes.size());
    EXPECT_EQ(deflate(&stream, Z_FINISH), Z_STREAM_END);
    bytes.resize(stream.total_out);
    deflateEnd(&stream);
    return bytes;
}

}  // namespace intake
