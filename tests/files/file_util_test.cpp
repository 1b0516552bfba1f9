// FileUtil as scripts and compiled programs use it.
#include "files/FileUtil.h"

#include <filesystem>
#include <fstream>
#include <set>

#include "automation/late_objects.h"
#include "files/DirUtil.h"
#include "runtime/screen.h"

namespace vela::test {
namespace {

class FilesFileUtil : public NoObjectsLeft {
  protected:
    // The result as text, "nothing" for no object, "error" for one raised.
    std::wstring called(const wchar_t* name, const std::vector<std::wstring>& texts = {}) {
        std::vector<Variant> arguments;
        for (const std::wstring& text : texts) arguments.emplace_back(std::wstring_view(text));
        const Called called = callWith(util_.Get(), name, arguments);
        if (called.outcome != S_OK) return L"error";
        if (!holdsObject(called.result)) return textOf(called.result);
        return called.result.pdispVal ? L"object" : L"nothing";
    }
    static std::wstring property(const Variant& object, const wchar_t* name) {
        return objectIn(object) ? textOf(getProperty(objectIn(object), name)) : L"nothing";
    }
    // Every byte, as the texts of files have them.
    static std::wstring bytes() {
        std::wstring text(256, L'\0');
        for (int i = 0; i < 256; ++i) {
            const char byte = static_cast<char>(i);
            MultiByteToWideChar(CP_ACP, 0, &byte, 1, &text[static_cast<std::size_t>(i)], 1);
        }
        return text;
    }
    static bool exists(const std::wstring& path) {
        return GetFileAttributesW(path.c_str()) != INVALID_FILE_ATTRIBUTES;
    }

    const TemporaryFolder folder_;
    const std::wstring file_ = folder_.path(L"ação.txt");
    ComPtr<_FileUtil> util_ = make<FileUtil>();
};

TEST_F(FilesFileUtil, WritesAndReadsBytes) {
    std::wstring large;
    while (large.size() < 300'000) large += bytes();  // more than is written at a time
    for (const std::wstring& text : {std::wstring(), bytes(), large, std::wstring(L"\r\n")}) {
        EXPECT_EQ(called(L"EscreverFicheiro", {file_, text}), L"True");
        EXPECT_EQ(called(L"LerFicheiro", {file_}), text);
        EXPECT_EQ(readFile(file_).size(), text.size());
    }
    EXPECT_EQ(called(L"EscreverFicheiro", {file_, L"\u20AC\u4E00"}), L"True");
    EXPECT_EQ(readFile(file_), "\x80?");
    EXPECT_FALSE(exists(file_ + L".vela.tmp"));
}

TEST_F(FilesFileUtil, AnswersNeutrallyWhereThereIsNoFile) {
    CreateDirectoryW(folder_.path(L"folder").c_str(), nullptr);
    // In Wine nobody may create files in Z:\sys; in Windows there is no such drive.
    for (const std::wstring& path :
         {std::wstring(), std::wstring(L"NUL"), std::wstring(L"C:\\CON"),
          std::wstring(L"\\\\.\\pipe\\vela"), std::wstring(L"?:\\x"),
          std::wstring(L"Z:\\sys\\vela.txt"), std::wstring(L"a\0b", 3), folder_.path(L"none\\x"),
          folder_.path(L"wild*.txt"), folder_.path(L""), folder_.path(L"folder"),
          folder_.path(std::wstring(300, L'x'))}) {
        SCOPED_TRACE(path);
        EXPECT_EQ(called(L"LerFicheiro", {path}), L"");
        EXPECT_EQ(called(L"EscreverFicheiro", {path, L"x"}), L"False");
        EXPECT_EQ(called(L"DesencriptarDeFicheiro", {path, L"k"}), L"");
        EXPECT_EQ(called(L"EncriptarParaFicheiro", {L"x", path, L"k"}), L"False");
        EXPECT_EQ(called(L"EncriptarFicheiroParaFicheiro", {path, file_}), L"False");
        EXPECT_EQ(called(L"DesencriptarFicheiroParaFicheiro", {path, file_}), L"False");
        EXPECT_EQ(called(L"ExisteFich", {path}), L"0");
        EXPECT_EQ(called(L"QuantosFich", {path}), L"0");
        EXPECT_EQ(called(L"ApagaFicheiro", {path}), L"0");
        EXPECT_EQ(called(L"TestarPermissaoEscrita", {path}), L"False");
    }
    EXPECT_EQ(called(L"QuantosFich", {L"Z:\\sys\\*.none"}), L"0");
    EXPECT_TRUE(exists(folder_.path(L"folder")));
    EXPECT_FALSE(exists(file_) || exists(L".vela.tmp"));
}

TEST_F(FilesFileUtil, KeepsTheOldContentWhenItCannotBeReplaced) {
    writeFile(file_, "old");
    SetFileAttributesW(file_.c_str(), FILE_ATTRIBUTE_READONLY);
    EXPECT_EQ(called(L"EscreverFicheiro", {file_, L"new"}), L"False");
    EXPECT_EQ(called(L"TestarPermissaoEscrita", {file_}), L"False");
    EXPECT_EQ(called(L"ApagaFicheiro", {file_}), L"0");
    SetFileAttributesW(file_.c_str(), FILE_ATTRIBUTE_HIDDEN);
    EXPECT_EQ(called(L"TestarPermissaoEscrita", {file_}), L"True");
    EXPECT_EQ(called(L"LerFicheiro", {file_}), L"old");
    EXPECT_EQ(called(L"EscreverFicheiro", {file_, L"new"}), L"True");
    EXPECT_TRUE(GetFileAttributesW(file_.c_str()) & FILE_ATTRIBUTE_HIDDEN);
    // Nothing is left of a file that was made to find out.
    EXPECT_EQ(called(L"TestarPermissaoEscrita", {folder_.path(L"new")}), L"True");
    EXPECT_EQ(called(L"QuantosFich", {folder_.path(L"*")}), L"1");
    EXPECT_EQ(called(L"ApagaFicheiro", {file_}), L"-1");
    EXPECT_FALSE(exists(file_));
}

TEST_F(FilesFileUtil, ReadsWhatOthersAreWritingUnlessTheyForbidIt) {
    std::ofstream other(std::filesystem::path(file_), std::ios::binary);
    other << "so far" << std::flush;
    EXPECT_EQ(called(L"LerFicheiro", {file_}), L"so far");
    other.close();
    const HANDLE alone =
        CreateFileW(file_.c_str(), GENERIC_READ, 0, nullptr, OPEN_EXISTING, 0, nullptr);
    EXPECT_EQ(called(L"LerFicheiro", {file_}), L"");
    EXPECT_EQ(called(L"EscreverFicheiro", {file_, L"x"}), L"False");
    EXPECT_EQ(called(L"TestarPermissaoEscrita", {file_}), L"False");
    EXPECT_EQ(called(L"ExisteFich", {file_}), L"-1");
    CloseHandle(alone);
    EXPECT_EQ(readFile(file_), "so far");
}

TEST_F(FilesFileUtil, SurvivesFilesLargerThanMemory) {
    for (const LONGLONG size : {LONGLONG{1} << 30, LONGLONG{3} << 30}) {
        if (sizeof(void*) > 4 && size < 0x7FFFFFFF) continue;  // there is memory for it
        writeFile(file_, "");
        std::filesystem::resize_file(file_, static_cast<std::uintmax_t>(size));
        EXPECT_EQ(called(L"LerFicheiro", {file_}), L"");
        EXPECT_EQ(called(L"EncriptarFicheiroParaFicheiro", {file_, folder_.path(L"x")}), L"False");
    }
}

TEST_F(FilesFileUtil, EnciphersAsTextUtilDoes) {
    const auto text = createAs<IDispatch>(L"VelaUtil10.TextUtil");
    const std::wstring note = bytes() + std::wstring(500, L'-'), hidden = folder_.path(L"hidden");
    for (const std::wstring& key : {std::wstring(L"sesame"), std::wstring()}) {
        const Called wanted = callWith(text.Get(), L"Encriptar", {Variant(note), Variant(key)});
        EXPECT_EQ(called(L"EncriptarParaFicheiro", {note, hidden, key}), L"True");
        EXPECT_EQ(called(L"LerFicheiro", {hidden}), textOf(wanted.result));
        EXPECT_EQ(called(L"DesencriptarDeFicheiro", {hidden, key}), note);
        EXPECT_EQ(called(L"DesencriptarFicheiroParaFicheiro", {hidden, file_, key}), L"True");
        EXPECT_EQ(called(L"LerFicheiro", {file_}), note);
        EXPECT_EQ(called(L"EncriptarFicheiroParaFicheiro", {file_, file_, key}), L"True");
        EXPECT_EQ(called(L"LerFicheiro", {file_}), textOf(wanted.result));
    }
    EXPECT_EQ(called(L"DesencriptarDeFicheiro", {hidden}), note);  // without a key
}

TEST_F(FilesFileUtil, CountsAndNamesFiles) {
    for (const wchar_t* name : {L"a.txt", L"b.txt", L"c.log"}) writeFile(folder_.path(name), "");
    CreateDirectoryW(folder_.path(L"d.txt").c_str(), nullptr);
    SetFileAttributesW(folder_.path(L"b.txt").c_str(), FILE_ATTRIBUTE_HIDDEN);
    const std::pair<const wchar_t*, std::set<std::wstring>> table[] = {
        {L"*.txt", {L"a.txt", L"b.txt"}},
        {L"?.log", {L"c.log"}},
        {L"A.TXT", {L"a.txt"}},
        {L"d.txt", {}},
        {L"NUL", {}},
    };
    for (const auto& [pattern, wanted] : table) {
        SCOPED_TRACE(pattern);
        const Variant mask{std::wstring_view(folder_.path(pattern))};
        EXPECT_EQ(called(L"QuantosFich", {textOf(mask)}), std::to_wstring(wanted.size()));
        Variant names = arrayOf({Variant(1L)});  // which is replaced
        const auto given = call(util_.Get(), L"QuantosFicheiros", {mask, byReference(names)});
        EXPECT_EQ(textOf(given.result), std::to_wstring(wanted.size()));
        std::set<std::wstring> found;
        Variant name;
        for (LONG i = 0; SUCCEEDED(SafeArrayGetElement(names.parray, &i, &name)); ++i) {
            found.insert(textOf(name));
            name = Variant();
        }
        EXPECT_EQ(found, wanted);
    }
}

TEST_F(FilesFileUtil, TellsWhatIsThere) {
    EXPECT_NE(called(L"NomeFichTemporario"), called(L"NomeFichTemporario"));
    CreateDirectoryW(folder_.path(L"folder.d").c_str(), nullptr);
    writeFile(folder_.path(L"file"), "");
    const std::tuple<const wchar_t*, const wchar_t*, const wchar_t*> table[] = {
        {L"folder.d", L"0", L"False"}, {L"file", L"-1", L"True"},     {L"none", L"0", L"False"},
        {L"none.txt", L"0", L"True"},  {L"none.d\\", L"0", L"False"},
    };
    for (const auto& [name, exists, probable] : table) {
        EXPECT_EQ(called(L"ExisteFich", {folder_.path(name)}), exists) << name;
        EXPECT_EQ(called(L"ProbablyIsFile", {folder_.path(name)}), probable) << name;
    }
}

TEST_F(FilesFileUtil, HandsOutTheObjectsOfTheScriptingRuntime) {
    writeFile(file_, "12345");
    const std::wstring folderPath = file_.substr(0, file_.rfind(L'\\'));
    const struct {
        std::wstring path, folder, file;
        bool hasDrive;
    } table[] = {
        {file_, folderPath, file_, true},
        {folderPath, folderPath, L"nothing", true},
        {folder_.path(L"none"), folderPath, L"nothing", true},
        {folder_.path(L"none\\none"), L"nothing", L"nothing", true},
        {L"NUL", L"nothing", L"nothing", false},
    };
    for (const auto& row : table) {
        const Variant path{std::wstring_view(row.path)};
        // What the variables held is let go of.
        Variant folder(callWith(util_.Get(), L"InfoDaPasta", {Variant(folderPath)}).result);
        Variant drive, file;
        call(util_.Get(), L"InfoDeFicheiro",
             {path, byReference(folder), byReference(drive), byReference(file)});
        EXPECT_EQ(property(folder, L"Path"), row.folder) << row.path;
        EXPECT_EQ(property(file, L"Path"), row.file) << row.path;
        EXPECT_EQ(objectIn(drive) != nullptr, row.hasDrive) << row.path;
    }
    for (const wchar_t* path : {L"C:\\none", L"C:\\win*", L""}) {
        EXPECT_EQ(called(L"InfoDaPasta", {path}), L"nothing") << path;
    }
    const std::pair<const wchar_t*, const wchar_t*> drives[] = {
        {L"c", L"object"},  {L"C:\\none", L"object"}, {L"relative", L"object"},
        {L"Q", L"nothing"}, {L"NUL", L"nothing"},     {L"", L"nothing"},
    };
    for (const auto& [path, drive] : drives) EXPECT_EQ(called(L"InfoDeDrive", {path}), drive);
}

TEST_F(FilesFileUtil, KnowsVolumes) {
    DWORD number = 0;
    GetVolumeInformationW(L"C:\\", nullptr, 0, &number, nullptr, nullptr, nullptr, 0);
    wchar_t digits[9];
    swprintf(digits, 9, L"%08lX", number);
    for (const wchar_t* path : {L"C:\\none\\none.txt", L"c:", L"C"}) {
        EXPECT_EQ(called(L"SerialNumberEx", {path}), digits) << path;
    }
    for (const wchar_t* path : {L"", L"Q:\\x", L"NUL", L"\\\\?"}) {
        EXPECT_EQ(called(L"SerialNumberEx", {path}), L"") << path;
    }
}

TEST_F(FilesFileUtil, AsksThroughACallersControl) {
    std::wstring log;
    HRESULT outcome = E_ABORT;
    const auto control = adopted(new LateObject);
    control->names = {L"DialogTitle", L"FileName", L"Filter",  L"Flags",
                      L"CancelError", L"ShowOpen", L"ShowSave"};
    control->invoked = [&](DISPID id, WORD flags, DISPPARAMS& call, VARIANT* result, EXCEPINFO*) {
        const std::wstring name = control->names[static_cast<std::size_t>(id)];
        if (flags & DISPATCH_PROPERTYPUT) log += name + L"=" + textOf(call.rgvarg[0]) + L" ";
        else if (name == L"FileName") *result = Variant(L"C:\\Data\\chosen.txt").release();
        else if (name == L"Flags") *result = Variant(1025L).release();
        else return log += name, outcome;
        return S_OK;
    };
    Variant title(L"Which?"), name(L"a.txt"), flags(4L), filter(L"Texts|*.txt");
    Variant dialog(control.Get());
    const auto asked = [&](bool opens) {
        log.clear();
        return textOf(call(util_.Get(), L"QueFicheiro",
                           {title, arg(opens), byReference(name), byReference(dialog),
                            byReference(flags), byReference(filter)})
                          .result);
    };
    const std::wstring set = L"DialogTitle=Which? FileName=a.txt Filter=Texts|*.txt Flags=4 ";
    EXPECT_EQ(asked(false) + textOf(name), L"a.txt");  // cancelled
    EXPECT_EQ(log, set + L"CancelError=True ShowSave");
    outcome = S_OK;
    EXPECT_EQ(asked(true), L"C:\\Data\\chosen.txt");
    EXPECT_EQ(log, set + L"CancelError=True ShowOpen");
    EXPECT_EQ(textOf(name) + L" " + textOf(flags), L"chosen.txt 1025");
}

TEST_F(FilesFileUtil, AsksNobodyWhereThereIsNoScreen) {
    if (hasScreen()) GTEST_SKIP() << "somebody would have to answer";
    Variant name(L"a.txt");
    const Called asked =
        call(util_.Get(), L"QueFicheiro", {Variant(L"Which?"), arg(true), byReference(name)});
    EXPECT_EQ(asked.outcome, S_OK);
    EXPECT_EQ(textOf(asked.result) + textOf(name), L"a.txt");
}

TEST_F(FilesFileUtil, TakesNullForEveryOptionalAndReference) {
    Bstr text;
    SHORT count = -1;
    EXPECT_EQ(util_->TransformarEmUNC(nullptr, nullptr, text.put()), S_OK);
    EXPECT_EQ(util_->SeparaPercursoNomeExt(nullptr, nullptr, nullptr, nullptr), S_OK);
    EXPECT_EQ(util_->InfoDeFicheiro(nullptr, nullptr, nullptr, nullptr), S_OK);
    EXPECT_EQ(util_->QuantosFicheiros(nullptr, nullptr, &count), S_OK);
    EXPECT_EQ(util_->LerFicheiro(nullptr, nullptr), E_POINTER);
}

TEST(FilesDirUtil, FindsTheFoldersThatTheSystemNames) {
    const std::tuple<const wchar_t*, const wchar_t*, std::wstring> table[] = {
        {L"SystemDirectory", L"SystemRoot", L"\\system32"},
        {L"UserDirectory", L"USERPROFILE", L""},
        {L"AllUserAppDataDirectory", L"ALLUSERSPROFILE", L""},
        {L"ProgramFilesCommonDirectory", L"CommonProgramFiles", L""},
        {L"ProgramFilesDirectory", L"ProgramFiles", L""},
        {L"TempDirectory", L"TEMP", L""},
    };
    const ComPtr<_DirUtil> folders = make<DirUtil>();
    for (const auto& [member, variable, below] : table) {
        wchar_t wanted[MAX_PATH];
        ASSERT_NE(GetEnvironmentVariableW(variable, wanted, MAX_PATH), 0U) << variable;
        const std::wstring given = textOf(call(folders.Get(), member).result);
        EXPECT_EQ(_wcsicmp(given.c_str(), (wanted + below).c_str()), 0) << given;
    }
}

}  // namespace
}  // namespace vela::test
