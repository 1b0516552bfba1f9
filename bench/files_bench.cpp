// Whole files and file searches against the platform's own calls.
#include <filesystem>
#include <memory>

#include "bench/client.h"
#include "bench/tables.h"

namespace bench {

namespace {

constexpr DWORD kSize = 64 << 20;
constexpr int kFiles = 10'000;

// A folder with the files that the rows need, removed at the end.
struct Folder {
    Folder() {
        std::filesystem::create_directories(path / "many");
        for (int i = 0; i < kFiles; ++i) {
            const auto name = path / "many" / ("invoice-" + std::to_string(i) + ".txt");
            CloseHandle(
                CreateFileW(name.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS, 0, nullptr));
        }
    }
    ~Folder() { std::filesystem::remove_all(path); }

    const std::filesystem::path path = std::filesystem::temp_directory_path() / "vela-bench";
};

std::wstring words() {
    const std::wstring line = L"Conta 4711, ação nº 5: 12,50 €\r\n";
    std::wstring text;
    text.reserve(kSize + line.size());
    while (text.size() < kSize) text += line;
    text.resize(kSize);
    return text;
}

void plainWrite(const wchar_t* path, const std::wstring& text) {
    const std::unique_ptr<char[]> bytes(new char[kSize]);
    const int size = WideCharToMultiByte(CP_ACP, 0, text.data(), static_cast<int>(text.size()),
                                         bytes.get(), kSize, nullptr, nullptr);
    const HANDLE file = CreateFileW(path, GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS, 0, nullptr);
    DWORD written = 0;
    WriteFile(file, bytes.get(), static_cast<DWORD>(size), &written, nullptr);
    CloseHandle(file);
    require(written == kSize ? S_OK : E_FAIL, "a plain write");
}

void plainRead(const wchar_t* path) {
    const HANDLE file =
        CreateFileW(path, GENERIC_READ, FILE_SHARE_READ, nullptr, OPEN_EXISTING, 0, nullptr);
    const DWORD size = GetFileSize(file, nullptr);
    const std::unique_ptr<char[]> bytes(new char[size]);
    DWORD read = 0;
    ReadFile(file, bytes.get(), size, &read, nullptr);
    CloseHandle(file);
    const BSTR text = SysAllocStringLen(nullptr, size);
    const int units = MultiByteToWideChar(CP_ACP, 0, bytes.get(), static_cast<int>(read), text,
                                          static_cast<int>(size));
    require(units == static_cast<int>(kSize) ? S_OK : E_FAIL, "a plain read");
    SysFreeString(text);
}

int plainCount(const wchar_t* mask) {
    WIN32_FIND_DATAW found;
    int count = 0;
    const HANDLE search = FindFirstFileW(mask, &found);
    if (search == INVALID_HANDLE_VALUE) return 0;
    do count += !(found.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY);
    while (FindNextFileW(search, &found));
    FindClose(search);
    return count;
}

template <class Ours, class Theirs>
Row compared(const char* what, double limit, Ours&& ours, Theirs&& theirs) {
    const auto [first, second] = alternately(ours, theirs, [] {});
    return {what, first, second, limit};
}

}  // namespace

bool files() {
    const Folder folder;
    const auto util = create<_FileUtil>(L"VelaUtil10.FileUtil");
    const std::wstring path = (folder.path / "text").wstring();
    const std::wstring other = (folder.path / "other").wstring();
    const std::wstring pattern = (folder.path / "many" / "*.txt").wstring();
    const std::wstring content = words();
    const Text name(path), text(content), mask(pattern);

    const Row writing = compared(
        "EscreverFicheiro of 64 MB (to WriteFile and WideCharToMultiByte)", 2.0,
        [&] {
            VARIANT_BOOL done = VARIANT_FALSE;
            require(util->EscreverFicheiro(name, text, &done), "EscreverFicheiro");
            require(done ? S_OK : E_FAIL, "EscreverFicheiro");
        },
        [&] { plainWrite(other.c_str(), content); });
    const Row reading = compared(
        "LerFicheiro of 64 MB (to ReadFile and MultiByteToWideChar)", 2.0,
        [&] {
            BSTR read = nullptr;
            require(util->LerFicheiro(name, &read), "LerFicheiro");
            require(SysStringLen(read) == kSize ? S_OK : E_FAIL, "LerFicheiro");
            SysFreeString(read);
        },
        [&] { plainRead(path.c_str()); });
    const Row searching = compared(
        "QuantosFicheiros over 10,000 (to FindFirstFile and FindNextFile)", 1.5,
        [&] {
            SAFEARRAY* names = nullptr;
            SHORT count = 0;
            require(util->QuantosFicheiros(mask, &names, &count), "QuantosFicheiros");
            require(count == kFiles ? S_OK : E_FAIL, "QuantosFicheiros");
            SafeArrayDestroy(names);
        },
        [&] { require(plainCount(pattern.c_str()) == kFiles ? S_OK : E_FAIL, "counting"); });
    return report("files", {writing, reading, searching});
}

}  // namespace bench
