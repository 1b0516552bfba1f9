#include "text/base64.h"

#include <gtest/gtest.h>

namespace vela {
namespace {

TEST(TextBase64, AgreesWithTheStandard) {
    struct {
        const char *bytes, *text;
    } const table[] = {
        {"", ""},
        {"f", "Zg=="},
        {"fo", "Zm8="},
        {"foo", "Zm9v"},
        {"foob", "Zm9vYg=="},
        {"fooba", "Zm9vYmE="},
        {"foobar", "Zm9vYmFy"},
        {"\xFB\xEF\xBE\xFF\xFF\xFF", "++++////"},
    };
    for (const auto& row : table) {
        EXPECT_EQ(toBase64(row.bytes), row.text);
        EXPECT_EQ(fromBase64(row.text), row.bytes) << row.text;
    }
}

TEST(TextBase64, KeepsEveryByte) {
    std::string bytes;
    for (int i = 0; i < 1000; ++i) {
        const std::string text = toBase64(bytes);
        EXPECT_EQ(text.size(), (bytes.size() + 2) / 3 * 4);
        EXPECT_EQ(fromBase64(text), bytes);
        bytes.push_back(static_cast<char>(i * 31 + i / 256));
    }
}

TEST(TextBase64, ReadsWhateverItIsGiven) {
    struct {
        const char *text, *bytes;
    } const table[] = {
        {"Zm9v\r\nYmFy\r\n", "foobar"},                       // lines
        {"Z\rm\n9 v\tYm Fy", "foobar"},                       // blanks within groups
        {"Zm9vYg", "foob"},                                   // no padding
        {"Zg==Zm8=Zm9v", "ffofoo"},                           // one after the other
        {"Zg=Zm9v", "ffoo"},                                  // padding too short
        {"Zm9v====Zm9v", "foofoo"},                           // and too long
        {"=Zm9v", "foo"},                                     //
        {"Zm9vY", "foo"},                                     // a symbol alone
        {"Zm9vY=Zm9v", "foofoo"},                             //
        {"Zm9vZh==", "foof"},                                 // bits beyond the byte
        {"Zm-_9v", "foo"},                                    // the other alphabet is foreign
        {"Zm\xE7\x80\xFF=", "f"},                             // and so is any other byte
        {"Zm9vYmFyZm9vYmFyZm9v!YmFy", "foobarfoobarfoobar"},  // groups go on behind it
        {"= = =\r\n", ""},
    };
    for (const auto& row : table) EXPECT_EQ(fromBase64(row.text), row.bytes) << row.text;
}

}  // namespace
}  // namespace vela
