// Splitting switch strings.
#include "serialization/core/switch_string.h"

#include <gtest/gtest.h>

#include <string>

namespace {

// Each switch as position|text|name|value, with a line end after it.
std::wstring read(std::wstring_view text) {
    std::wstring all;
    vela::SwitchReader reader(text);
    while (const auto found = reader.next()) {
        all.append(std::to_wstring(found->position)).append(L"|").append(found->text);
        all.append(L"|").append(found->name).append(L"|").append(found->value).append(L"\n");
    }
    return all;
}

TEST(SerializationSwitchString, IsReadFromLeftToRight) {
    const std::pair<std::wstring, std::wstring> table[] = {
        {L"", L""},
        {L"prog user=ana", L""},
        {L"prog /user=ana /log", L"1|user=ana|user|ana\n2|log|log|\n"},
        {L"/a//b", L"1|a|a|\n2|||\n3|b|b|\n"},
        {L"/path=c:/data", L"1|path=c:|path|c:\n2|data|data|\n"},
        {L"  /  x = 1  ", L"1|x = 1|x | 1\n"},
        {L"/\tx\t ", L"1|\tx\t|\tx\t|\n"},
        {L"/a=b=c/=v/n=", L"1|a=b=c|a|b=c\n2|=v||v\n3|n=|n|\n"},
        {L"/say=\"a/b\"", L"1|say=\"a|say|\"a\n2|b\"|b\"|\n"},
        {std::wstring(L"/a\0=b", 5), std::wstring(L"1|a\0=b|a\0|b\n", 12)},
    };
    for (const auto& [text, switches] : table) EXPECT_EQ(read(text), switches) << text;
}

}  // namespace
