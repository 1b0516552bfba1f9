// Every example in the documentation of the text members, run as a script would run it.
#include <cwctype>
#include <deque>
#include <filesystem>
#include <map>
#include <set>
#include <sstream>

#include "automation/late_bound.h"
#include "frame/built_library.h"
#include "support/documents.h"

namespace vela {
namespace {

using test::arg;
using test::arrayOf;

std::wstring shown(const Variant& value) {
    if (value.vt == VT_BSTR) return L'"' + textOf(value) + L'"';
    if (value.vt == VT_EMPTY || !(value.vt & VT_ARRAY)) return textOf(value);
    std::wstring list;
    LONG index = 0;
    for (Variant element; SUCCEEDED(SafeArrayGetElement(value.parray, &index, &element)); ++index) {
        list += (index ? L", " : L"") + shown(element);
        element = Variant();
    }
    return L'{' + list + L'}';
}

// Reads and runs a call such as Member("text", -1, 2.5, {"array"}, variable=True, Other("x")).
class Example {
  public:
    Example(IDispatch* object, std::wstring_view call) : object_(object), rest_(call) {}

    // What the member returns, then what its variables hold afterwards.
    std::wstring outcome() {
        std::wstring variables;
        const Variant result = call(word(), &variables);
        std::wstring all = shown(result) + variables;
        return all.starts_with(L", ") ? all.substr(2) : all;
    }
    const std::set<std::wstring>& members() const { return members_; }

  private:
    bool take(wchar_t unit) {
        while (rest_.starts_with(L' ')) rest_.remove_prefix(1);
        const bool there = rest_.starts_with(unit);
        if (there) rest_.remove_prefix(1);
        return there;
    }
    void expect(wchar_t unit) {
        EXPECT_TRUE(take(unit)) << std::wstring(1, unit) << " at " << std::wstring(rest_);
    }
    std::wstring takeWhile(bool (*belongs)(wchar_t)) {
        std::size_t length = 0;
        while (length < rest_.size() && belongs(rest_[length])) ++length;
        const std::wstring taken(rest_.substr(0, length));
        rest_.remove_prefix(length);
        return taken;
    }
    std::wstring word() {
        take(L' ');
        return takeWhile([](wchar_t unit) { return std::iswalnum(unit) != 0; });
    }

    Variant call(const std::wstring& member, std::wstring* changed = nullptr) {
        std::deque<std::pair<std::wstring, Variant>> given;
        expect(L'(');
        while (!take(L')') && !rest_.empty()) {
            if (!given.empty()) expect(L',');
            given.push_back(argument());
        }
        std::vector<VARIANT> arguments;
        for (auto& [name, value] : given) {
            arguments.push_back(name.empty() ? value : test::byReference(value));
        }
        members_.insert(member);
        test::Called called = test::call(object_, member.c_str(), arguments);
        EXPECT_EQ(called.outcome, S_OK) << called.description;
        for (const auto& [name, value] : given) {
            if (changed && !name.empty()) *changed += L", " + name + L" = " + shown(value);
        }
        return std::move(called.result);
    }

    // With its name if it is a variable.
    std::pair<std::wstring, Variant> argument() {
        take(L' ');
        if (rest_.empty() || !std::iswalpha(rest_.front())) return {L"", literal()};
        std::wstring name = word();
        if (!take(L'=')) return {L"", named(name)};
        return {std::move(name), argument().second};
    }

    Variant named(const std::wstring& name) {
        if (name == L"Empty") return Variant();
        Variant value;
        value.vt = VT_NULL;
        if (name == L"Null") return value;
        if (name == L"True" || name == L"False") return Variant(arg(name == L"True"));
        return call(name);
    }

    Variant literal() {
        if (take(L'"')) {
            const std::wstring content = takeWhile([](wchar_t unit) { return unit != L'"'; });
            expect(L'"');
            return Variant(content);
        }
        if (take(L'{')) return list();
        const std::wstring digits =
            takeWhile([](wchar_t unit) { return std::wcschr(L"-.0123456789", unit) != nullptr; });
        EXPECT_FALSE(digits.empty()) << std::wstring(rest_);
        return digits.find(L'.') == digits.npos
                   ? Variant(std::wcstol(digits.c_str(), nullptr, 10))
                   : Variant(arg(std::wcstod(digits.c_str(), nullptr)));
    }

    Variant list() {
        std::vector<Variant> elements;
        while (!take(L'}') && !rest_.empty()) {
            if (!elements.empty()) expect(L',');
            elements.push_back(argument().second);
        }
        return arrayOf(elements);
    }

    IDispatch* object_;
    std::wstring_view rest_;
    std::set<std::wstring> members_;
};

std::wstring wide(std::string_view utf8) {
    std::wstring text(utf8.size(), L'\0');
    text.resize(static_cast<std::size_t>(
        MultiByteToWideChar(CP_UTF8, 0, utf8.data(), static_cast<int>(utf8.size()), text.data(),
                            static_cast<int>(text.size()))));
    return text;
}

// What stands between the backticks of a cell.
std::wstring codeIn(const std::string& cell) {
    return cell.size() < 2 ? L"" : wide(std::string_view(cell).substr(1, cell.size() - 2));
}

TEST(TextExamples, GiveWhatTheDocumentationSaysForEveryMember) {
    const ComPtr<IDispatch> util = test::create(L"VelaUtil10.TextUtil");
    std::istringstream page(test::readFile(std::filesystem::path(VELA_DOCS "/text.md").wstring()));
    std::set<std::wstring> members;
    bool inExamples = false;
    for (std::string line; std::getline(page, line);) {
        const auto cells = test::cellsOf(line);
        if (cells.empty() || cells[0] == "Example") inExamples = !cells.empty();
        if (!inExamples || !cells[0].starts_with('`')) continue;
        const std::wstring call = codeIn(cells[0]);
        SCOPED_TRACE(call);
        Example example(util.Get(), call);
        EXPECT_EQ(example.outcome(), codeIn(cells[1]));
        members.insert(example.members().begin(), example.members().end());
    }
    ComPtr<ITypeInfo> info;
    ASSERT_EQ(util->GetTypeInfo(0, 0, &info), S_OK);
    for (MEMBERID id = 1; id <= 36; ++id) {
        const std::wstring name = test::nameOf(info.Get(), id);
        EXPECT_TRUE(members.count(name)) << name;
    }
}

}  // namespace
}  // namespace vela
