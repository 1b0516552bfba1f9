// The built type library against the documented catalogue, line by line.
#include <cwctype>
#include <map>
#include <set>
#include <sstream>

#include "frame/built_library.h"

namespace vela {
namespace {

using test::Described;
using test::eachDescription;
using test::nameOf;

using Lines = std::vector<std::wstring>;
using Catalogue = std::map<std::wstring, Lines>;  // by "kind Name"

// Parameter names are stored once for the whole library, in the case that came first.
std::wstring withoutParameterCase(std::wstring line) {
    for (std::size_t i = line.find(L'('); i < line.size(); ++i) {
        if (line[i] == L')') break;
        if (line[i] != L':') continue;
        for (std::size_t k = i; std::iswalnum(line[k - 1]); --k) {
            line[k - 1] = static_cast<wchar_t>(std::towlower(line[k - 1]));
        }
    }
    return line;
}

Catalogue documented() {
    std::istringstream file(test::readFile(L"Z:" VELA_CATALOGUE));
    Catalogue catalogue;
    Lines* section = nullptr;
    for (std::string narrow; std::getline(file, narrow);) {
        const std::wstring line(narrow.begin(), narrow.end());
        if (line.starts_with(L"  ")) section->push_back(withoutParameterCase(line.substr(2)));
        else if (!line.empty() && line[0] != L'#') section = &catalogue[line];
    }
    EXPECT_FALSE(catalogue.empty());
    return catalogue;
}

std::wstring typeName(ITypeInfo* info, const TYPEDESC& type) {
    switch (type.vt) {
        case VT_I2: return L"int16";
        case VT_I4: return L"int32";
        case VT_R4: return L"single";
        case VT_R8: return L"double";
        case VT_CY: return L"currency";
        case VT_DATE: return L"date";
        case VT_BSTR: return L"string";
        case VT_BOOL: return L"bool";
        case VT_VARIANT: return L"variant";
        case VT_DISPATCH: return L"object";
        case VT_UNKNOWN: return L"enumerator";
        case VT_SAFEARRAY: return typeName(info, *type.lptdesc) + L"()";
        case VT_PTR: return typeName(info, *type.lptdesc);
        case VT_USERDEFINED: break;
        default: return L"type " + std::to_wstring(type.vt);
    }
    ComPtr<ITypeInfo> referenced;
    if (FAILED(info->GetRefTypeInfo(type.hreftype, &referenced))) return L"unresolved";
    const std::wstring name = nameOf(referenced.Get());
    // The scripting runtime's classes are named, not their interfaces.
    for (const wchar_t* scripting : {L"IFolder", L"IDrive", L"IFile"}) {
        if (name == scripting) return name.substr(1);
    }
    return name[0] == L'_' ? name.substr(1) : name;
}

// Whether a value goes through a pointer; an object is a pointer already.
bool isReference(ITypeInfo* info, const TYPEDESC& type) {
    if (type.vt != VT_PTR) return false;
    const TYPEDESC& value = *type.lptdesc;
    ComPtr<ITypeInfo> referenced;
    if (value.vt != VT_USERDEFINED || FAILED(info->GetRefTypeInfo(value.hreftype, &referenced))) {
        return true;
    }
    return Described(referenced).attributes.typekind == TKIND_ENUM;
}

std::wstring defaultOf(const PARAMDESC& description) {
    const VARIANT& value = description.pparamdescex->varDefaultValue;
    return value.vt == VT_BSTR ? L"\"" + textOf(value) + L"\"" : textOf(value);
}

std::wstring parameterLine(ITypeInfo* info, const ELEMDESC& parameter, std::wstring_view name) {
    const USHORT flags = parameter.paramdesc.wParamFlags;
    const bool reference = isReference(info, parameter.tdesc);
    EXPECT_EQ(reference, (flags & PARAMFLAG_FOUT) != 0) << "an in parameter goes by value";
    std::wstring line = flags & PARAMFLAG_FOPT ? L"optional " : L"";
    line +=
        (reference ? L"ref " : L"") + std::wstring(name) + L": " + typeName(info, parameter.tdesc);
    if (flags & PARAMFLAG_FHASDEFAULT) line += L" = " + defaultOf(parameter.paramdesc);
    return line;
}

const wchar_t* kindOf(const FUNCDESC& function) {
    switch (function.invkind) {
        case INVOKE_PROPERTYGET: return L"get ";
        case INVOKE_PROPERTYPUT: return L"let ";
        case INVOKE_PROPERTYPUTREF: return L"set ";
        default: return function.funckind == FUNC_DISPATCH ? L"event " : L"method ";
    }
}

std::wstring functionLine(ITypeInfo* info, const FUNCDESC& function) {
    BSTR names[20] = {};
    UINT named = 0;
    info->GetNames(function.memid, names, 20, &named);
    std::vector<Bstr> owned;
    for (UINT i = 0; i < named; ++i) owned.push_back(Bstr::owning(names[i]));
    std::wstring parameters;
    std::wstring result;
    for (SHORT i = 0; i < function.cParams; ++i) {
        const ELEMDESC& parameter = function.lprgelemdescParam[i];
        const bool assigned = function.invkind & (INVOKE_PROPERTYPUT | INVOKE_PROPERTYPUTREF);
        if ((parameter.paramdesc.wParamFlags & PARAMFLAG_FRETVAL) || assigned) {
            result = L": " + typeName(info, parameter.tdesc);
            continue;
        }
        const std::size_t place = static_cast<std::size_t>(i) + 1;
        const std::wstring name = place < owned.size() ? owned[place].str() : L"?";
        parameters += (parameters.empty() ? L"(" : L", ") + parameterLine(info, parameter, name);
    }
    if (!parameters.empty()) parameters += L")";
    return kindOf(function) + nameOf(info, function.memid) + parameters + result;
}

void expectHelp(ITypeInfo* info, MEMBERID member) {
    Bstr help;
    info->GetDocumentation(member, nullptr, help.put(), nullptr, nullptr);
    EXPECT_FALSE(help.view().empty()) << nameOf(info, member);
}

// The members of an interface in the order of its virtual functions.
Lines membersOf(const Described& described) {
    Lines lines;
    ITypeInfo* info = described.info.Get();
    int last = -1;
    for (UINT i = 0; i < described.attributes.cFuncs; ++i) {
        FUNCDESC* function = nullptr;
        EXPECT_EQ(info->GetFuncDesc(i, &function), S_OK);
        if (function->funckind != FUNC_DISPATCH) {
            EXPECT_GT(function->oVft, last) << described.name;
            last = function->oVft;
        }
        lines.push_back(withoutParameterCase(functionLine(info, *function)));
        expectHelp(info, function->memid);
        info->ReleaseFuncDesc(function);
    }
    return lines;
}

Lines constantsOf(const Described& described) {
    Lines lines;
    for (UINT i = 0; i < described.attributes.cVars; ++i) {
        VARDESC* constant = nullptr;
        EXPECT_EQ(described.info->GetVarDesc(i, &constant), S_OK);
        lines.push_back(nameOf(described.info.Get(), constant->memid) + L" = " +
                        textOf(*constant->lpvarValue));
        described.info->ReleaseVarDesc(constant);
    }
    return lines;
}

void addClass(Catalogue& catalogue, const Described& described) {
    const WORD flags = described.attributes.wTypeFlags;
    const wchar_t* kind = flags & TYPEFLAG_FAPPOBJECT   ? L"global "
                          : flags & TYPEFLAG_FCANCREATE ? L"creatable "
                                                        : L"noncreatable ";
    Lines& lines = catalogue[kind + described.name];
    for (UINT i = 0; i < described.attributes.cImplTypes; ++i) {
        INT implemented = 0;
        described.info->GetImplTypeFlags(i, &implemented);
        const Described face = described.implemented(i);
        if (implemented & IMPLTYPEFLAG_FSOURCE) {
            EXPECT_EQ(face.name, L"__" + described.name);
            catalogue[L"events " + described.name] = membersOf(face);
        } else if (implemented & IMPLTYPEFLAG_FDEFAULT) {
            EXPECT_EQ(face.name, L"_" + described.name);
            const Lines members = membersOf(face.implemented(static_cast<UINT>(-1)));
            lines.insert(lines.begin(), members.begin(), members.end());
        } else {
            lines.push_back(L"implements " + face.name.substr(1));
        }
    }
}

TEST(FrameCatalogue, IsWhatTheBuiltTypeLibraryPresents) {
    Catalogue built;
    eachDescription([&](const Described& described) {
        if (described.isClass()) addClass(built, described);
        if (described.attributes.typekind == TKIND_ENUM) {
            built[L"enum " + described.name] = constantsOf(described);
        }
    });
    const Catalogue expected = documented();
    for (const auto& [title, lines] : expected) {
        EXPECT_TRUE(built.contains(title)) << std::filesystem::path(title);
        EXPECT_EQ(built[title], lines) << std::filesystem::path(title);
    }
    for (const auto& [title, lines] : built) {
        EXPECT_TRUE(expected.contains(title)) << "not documented: " << std::filesystem::path(title);
    }
}

// An object browser lists the classes, not the interfaces behind them.
TEST(FrameCatalogue, HasAnIdAndAHelpTextForEverythingAndHidesTheInterfaces) {
    std::set<std::wstring> ids;
    eachDescription([&](const Described& described) {
        SCOPED_TRACE(testing::PrintToString(described.name));
        wchar_t id[40] = {};
        StringFromGUID2(described.attributes.guid, id, 40);
        EXPECT_TRUE(ids.insert(id).second);
        expectHelp(described.info.Get(), MEMBERID_NIL);
        if (described.attributes.typekind != TKIND_DISPATCH) return;
        const WORD flags = described.attributes.wTypeFlags;
        EXPECT_TRUE(flags & TYPEFLAG_FHIDDEN);
        const bool events = described.name.starts_with(L"__");
        EXPECT_EQ((flags & TYPEFLAG_FDUAL) == 0, events);
    });
    EXPECT_GT(ids.size(), 100u);
}

}  // namespace
}  // namespace vela
