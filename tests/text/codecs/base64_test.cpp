#include "text/codecs/core/base64.h"

#include <gtest/gtest.h>

namespace vela {
namespace {

TEST(TextBase64, WritesEveryByteInTheStandardAlphabet) {
    EXPECT_EQ(toBase64("f"), "Zg==");
    EXPECT_EQ(toBase64("foobar\xFB\xEF\xBE\xFF\xFF\xFF"), "Zm9vYmFy++++////");
    std::string bytes;
    for (int i = 0; i < 1000; ++i) {
        const std::string text = toBase64(bytes);
        EXPECT_EQ(text.size(), (bytes.size() + 2) / 3 * 4);
        EXPECT_EQ(fromBase64(text), bytes);
        bytes.push_back(static_cast<char>(i * 31 + i / 256));
    }
}

TEST(TextBase64, ReadsWhateverItIsGiven) {
    const std::pair<const char*, const char*> table[] = {
        {"Z\rm\n9 v\tYm Fy", "foobar"},                       // blanks within groups
        {"Zm9vYg", "foob"},                                   // no padding
        {"Zg==Zm8=Zm9v", "ffofoo"},                           // one after the other
        {"Zg=Zm9v", "ffoo"},                                  // padding too short
        {"=Zm9v====Zm9vY=", "foofoo"},                        // and too long, a symbol alone
        {"Zm9vZh==", "foof"},                                 // bits beyond the byte
        {"Zm-_9v", "foo"},                                    // the other alphabet is foreign
        {"Zm\xE7\x80\xFF=", "f"},                             // and so is any other byte
        {"Zm9vYmFyZm9vYmFyZm9v!YmFy", "foobarfoobarfoobar"},  // groups go on behind it
    };
    for (const auto& [text, bytes] : table) EXPECT_EQ(fromBase64(text), bytes) << text;
}

}  // namespace
}  // namespace vela
