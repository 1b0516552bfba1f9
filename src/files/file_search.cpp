#include "files/file_search.h"

#include <windows.h>

#include "files/full_path.h"
#include "runtime/handles.h"

namespace vela {

namespace {

class Search {
  public:
    explicit Search(const std::wstring& mask) {
        if (isDevice(mask)) return;
        search_.reset(FindFirstFileExW(mask.c_str(), FindExInfoBasic, &found_,
                                       FindExSearchNameMatch, nullptr, FIND_FIRST_EX_LARGE_FETCH));
    }

    // The name of the next file; null at the end.
    const wchar_t* next() {
        while (search_) {
            if (started_ && !FindNextFileW(search_.get(), &found_)) break;
            started_ = true;
            if (!(found_.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY)) return found_.cFileName;
        }
        return nullptr;
    }

  private:
    SearchHandle search_;
    bool started_ = false;
    WIN32_FIND_DATAW found_;
};

}  // namespace

std::size_t countFiles(const std::wstring& mask) {
    Search search(mask);
    std::size_t count = 0;
    while (search.next()) ++count;
    return count;
}

std::vector<std::wstring> namesOfFiles(const std::wstring& mask) {
    Search search(mask);
    std::vector<std::wstring> names;
    while (const wchar_t* name = search.next()) names.emplace_back(name);
    return names;
}

}  // namespace vela
