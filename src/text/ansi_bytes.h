// Text as bytes and back, through the system's ANSI code page: one byte for each UTF-16 unit, one
// unit for each byte. Bytes that become text are the same bytes again afterwards.
//
// Where the system's code page has characters of several bytes, which cannot be, windows-1252 takes
// its place.
#pragma once

#include <string>
#include <string_view>

namespace vela {

// What the code page lacks becomes its default character. Throws std::bad_alloc.
std::string ansiBytes(std::wstring_view text);
// The same, into a place for as many bytes as there are units.
void ansiBytes(std::wstring_view text, char* bytes);

// Throws std::bad_alloc.
std::wstring ansiText(std::string_view bytes);
// The same, into a place for as many units as there are bytes.
void ansiText(std::string_view bytes, wchar_t* units);

}  // namespace vela
