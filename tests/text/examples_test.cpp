// Every example in the documentation of the text members, run as a script would run it, and of
// amounts in words.
#include <deque>
#include <filesystem>
#include <regex>
#include <sstream>

#include "automation/late_objects.h"
#include "support/documents.h"
#include "text/numbers/core/extenso.h"

namespace vela::test {
namespace {

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
    Example(IDispatch* object, const std::wstring& call) : object_(object) {
        static const std::wregex kToken(L"\"[^\"]*\"|[-.0-9]+|[A-Za-z0-9]+|[(){},=]");
        for (std::wsregex_iterator at(call.begin(), call.end(), kToken), end; at != end; ++at) {
            tokens_.push_back(at->str());
        }
    }

    // What the member returns, then what its variables hold afterwards.
    std::wstring outcome() {
        std::wstring variables;
        const std::wstring member = next();
        EXPECT_TRUE(take(L"("));
        const std::wstring all = shown(call(member, &variables)) + variables;
        return all.starts_with(L", ") ? all.substr(2) : all;
    }

  private:
    std::wstring next() {
        if (tokens_.empty()) return {};
        std::wstring token = std::move(tokens_.front());
        tokens_.pop_front();
        return token;
    }
    bool take(const wchar_t* token) {
        const bool there = !tokens_.empty() && tokens_.front() == token;
        if (there) next();
        return there;
    }

    // What stands before `close`, variables with their names.
    std::deque<std::pair<std::wstring, Variant>> valuesUpTo(const std::wstring& close) {
        std::deque<std::pair<std::wstring, Variant>> values;
        for (std::wstring token = next(); token != close && !token.empty(); token = next()) {
            if (token == L",") token = next();
            std::wstring name;
            if (take(L"=")) name = std::exchange(token, next());
            values.emplace_back(name, valueOf(token));
        }
        return values;
    }

    Variant valueOf(const std::wstring& token) {
        Variant value;
        if (token == L"Empty") return value;
        value.vt = VT_NULL;
        if (token == L"Null") return value;
        if (token == L"True" || token == L"False") return Variant(arg(token == L"True"));
        if (token.starts_with(L'"')) return Variant(token.substr(1, token.size() - 2));
        if (token == L"{") {
            std::vector<Variant> elements;
            for (auto& [name, element] : valuesUpTo(L"}")) elements.push_back(element);
            return arrayOf(elements);
        }
        if (take(L"(")) return call(token);
        return token.find(L'.') == token.npos ? Variant(std::stol(token))
                                              : Variant(arg(std::stod(token)));
    }

    Variant call(const std::wstring& member, std::wstring* changed = nullptr) {
        auto given = valuesUpTo(L")");
        std::vector<VARIANT> arguments;
        for (auto& [name, value] : given) {
            arguments.push_back(name.empty() ? value : byReference(value));
        }
        Called called = test::call(object_, member.c_str(), arguments);
        EXPECT_EQ(called.outcome, S_OK) << called.description;
        for (const auto& [name, value] : given) {
            if (changed && !name.empty()) *changed += L", " + name + L" = " + shown(value);
        }
        return std::move(called.result);
    }

    IDispatch* object_;
    std::deque<std::wstring> tokens_;
};

// What stands between the backticks of a cell.
std::wstring codeIn(const std::string& cell) {
    if (cell.size() < 2) return {};
    return std::filesystem::path(std::u8string(cell.begin() + 1, cell.end() - 1)).wstring();
}

// The rows of a document's tables of examples, the first cell being code.
std::vector<std::vector<std::string>> examplesIn(const char* document, const char* heading) {
    std::istringstream page(readFile(std::filesystem::path(document).wstring()));
    std::vector<std::vector<std::string>> rows;
    bool inExamples = false;
    for (std::string line; std::getline(page, line);) {
        const auto cells = cellsOf(line);
        if (cells.empty() || cells[0] == heading) inExamples = !cells.empty();
        else if (inExamples && cells[0].starts_with('`')) rows.push_back(cells);
    }
    return rows;
}

TEST(TextExamples, GiveWhatTheDocumentationSays) {
    const ComPtr<IDispatch> util = create(L"VelaUtil10.TextUtil");
    const auto rows = examplesIn(VELA_DOCS "/text.md", "Example");
    EXPECT_GE(rows.size(), 50u);
    for (const auto& cells : rows) {
        EXPECT_EQ(Example(util.Get(), codeIn(cells[0])).outcome(), codeIn(cells[1])) << cells[0];
    }
}

// An amount as it is written, with up to four decimals.
Currency amountOf(std::wstring text) {
    text += text.find(L'.') == text.npos ? L".0000" : L"0000";
    const std::size_t point = text.find(L'.');
    return std::stoll(text.substr(0, point) + text.substr(point + 1, 4));
}

TEST(TextExamples, WriteAmountsInWordsAsTheDocumentationDoes) {
    const auto rows = examplesIn(VELA_DOCS "/extenso.md", "`numero`");
    EXPECT_GE(rows.size(), 50u);
    for (const auto& cells : rows) {
        EXPECT_EQ(inWords(amountOf(codeIn(cells[0])), codeIn(cells[1])), codeIn(cells[2]))
            << cells[0];
    }
}

}  // namespace
}  // namespace vela::test
