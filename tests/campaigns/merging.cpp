// Two programs and one section: each keeps what is its own, whatever the other saves meanwhile.
//
//     vela_merging [ROUNDS]      500 unless given
//
// Starts itself twice. Both use the registered library with one document, application and user, and
// save without a pause. Every round each gives all its keys the round's number; now and then it
// adds an item or removes one, and stops, or ends its apartment without, and starts anew. Then the
// same once more, where one of them starts while the document cannot be read. Prints what went
// wrong, and one line at the end.
#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <map>
#include <string>

#include "automation/enumerator.h"
#include "automation/late_bound.h"
#include "files/whole_file.h"
#include "support/child_process.h"
#include "support/registered.h"

namespace vela::test {
namespace {

constexpr int kKeys = 5;
constexpr wchar_t kApplication[] = L"SALES";
constexpr wchar_t kUser[] = L"ANA";
int failures = 0;

void expect(bool right, const std::string& what) {
    if (right || ++failures > 20) return;
    std::printf("%s\n", what.c_str());
    std::fflush(stdout);
}

std::wstring wide(const std::string& ascii) { return {ascii.begin(), ascii.end()}; }
std::string narrow(std::wstring_view ascii) {
    return std::filesystem::path(std::wstring(ascii)).string();
}

// The items' values by their identities, which are all different; kept from one process to the
// next in a file.
using Values = std::map<std::string, int>;

Values valuesIn(const std::filesystem::path& file) {
    std::ifstream stream(file);
    Values values;
    std::string id;
    for (int value = 0; stream >> id >> value;) values[id] = value;
    return values;
}

void write(const Values& values, const std::filesystem::path& file) {
    std::ofstream stream(file);
    for (const auto& [id, value] : values) stream << id << ' ' << value << '\n';
}

std::string key(const std::string& writer, int number) {
    return writer + "-K" + std::to_string(number);
}

// ---- the document, as it lies on the disk ------------------------------------------------------

// None when it cannot be read.
std::string contentOf(const std::wstring& document) {
    Bytes bytes;
    readWholeFile(document, bytes);
    return {reinterpret_cast<const char*>(bytes.data()), bytes.size()};
}

bool isWhole(std::string text) {
    while (!text.empty() && std::isspace(static_cast<unsigned char>(text.back()))) text.pop_back();
    return text.starts_with("<?xml") && text.ends_with("</UserPreferences>");
}

// 0 when there is no such item.
int storedValue(const std::string& text, const std::string& id) {
    const std::string before = "id=\"" + id + "\" value=\"";
    const auto at = text.find(before);
    return at == text.npos ? 0 : std::atoi(text.c_str() + at + before.size());
}

// What is saved in the midst of a round has its first keys anew, and the others as they were.
bool isOneSave(const std::string& text, const std::string& writer) {
    const int newest = storedValue(text, key(writer, 0));
    int last = newest;
    for (int i = 1; i < kKeys; ++i) {
        const int value = storedValue(text, key(writer, i));
        if (value > last || value < newest - 1) return false;
        last = value;
    }
    return true;
}

// ---- a writer ----------------------------------------------------------------------------------

// From one start of the preferences to the next.
class Life {
  public:
    Life(const std::wstring& document, const std::string& writer)
        : group_(wide(writer)),
          preferences_(startedPreferences(document, kApplication, kUser)),
          values_(got(preferences_, &_UPUtil::get_Values)) {}

    // 0 when there is no such item.
    int value(const std::string& id, const std::string& writer) const {
        Bstr value;
        check(values_->GetValue(Bstr(wide(id)).get(), Bstr(wide(writer)).get(), Bstr(L"0").get(),
                                value.put()));
        return _wtoi(value.str().c_str());
    }
    void keep(const std::string& id, int value) const {
        check(values_->SaveValue(Bstr(wide(id)).get(), group_.get(),
                                 Bstr(std::to_wstring(value)).get()));
    }
    void remove(const std::string& id) const {
        const auto sections = got(manager(), &_UPManager::get_PreferenceSections);
        ComPtr<_IUPSection> section;
        check(sections->get_section(Variant(L"KV"), &section));
        check(got(section, &_IUPSection::get_Items)->Remove(Bstr(wide(id)).get(), group_.get()));
    }
    void save() const { expect(isTrue(got(manager(), &_UPManager::Save)), "no save"); }
    void stop() const { check(preferences_->StopUPM()); }

  private:
    ComPtr<_UPManager> manager() const { return got(preferences_, &_UPUtil::get_ActiveUPM); }

    const Bstr group_;
    const ComPtr<_UPUtil> preferences_;
    const ComPtr<_UPValueUtil> values_;
};

class Writer {
  public:
    // `blind`: while it starts, the document cannot be read. `disturbed`: that may be so later, and
    // then nothing can be saved.
    Writer(std::string name, std::filesystem::path folder, int round)
        : name_(std::move(name)),
          other_(name_ == "A" ? "B" : "A"),
          folder_(std::move(folder)),
          round_(round),
          own_(valuesIn(memory())) {}
    ~Writer() { write(own_, memory()); }

    void runInPeace(int rounds) {
        const int life = name_ == "A" ? 12 : 17;
        for (; rounds > 0; rounds -= life) {
            inApartment([&] {
                const std::string before = contentOf(document());
                const Life now(document(), name_);
                checkStart(now, before);
                for (int i = std::min(life, rounds); i > 1; --i) saveRound(now);
                changeAll(now);
                if (round_ % 2 == 0) now.stop();
            });
            checkStored();
        }
    }
    // While it runs, there are times when the document cannot be read or saved. It has started
    // blindly when its beginning is such a time.
    void runDisturbed(int rounds, bool blind, const std::wstring& event) {
        const NamedEvent begun(event + wide(name_)), free(event);
        inApartment([&] {
            const Life now(document(), name_);
            begun.set();
            if (blind) startBlindly(now);
            for (int i = 0; i < rounds; ++i) {
                if (i == rounds / 2) expect(free.isSetSoon(), "nobody sets the document free");
                changeAll(now);
                now.save();
                checkWhole(contentOf(document()));
            }
            now.stop();
        });
        checkStored();
    }

  private:
    std::filesystem::path memory() const { return folder_ / (name_ + ".txt"); }
    std::wstring document() const { return (folder_ / "document.xml").wstring(); }
    std::string told(const std::string& what) const {
        return name_ + ", round " + std::to_string(round_) + ": " + what;
    }

    template <class Body>
    void inApartment(Body body) {
        check(CoInitialize(nullptr));
        expect(quietly(body), told("a call failed"));
        CoUninitialize();
    }

    // `before`: the document before the start.
    void checkStart(const Life& life, const std::string& before) const {
        for (const auto& [id, value] : own_) {
            expect(life.value(id, name_) == value, told("starts without its " + id));
        }
        for (int i = 0; i < kKeys; ++i) {
            const std::string theirs = key(other_, i);
            expect(life.value(theirs, other_) >= storedValue(before, theirs),
                   told("does not see the other's " + theirs));
        }
    }
    // What it has not read it cannot know, and does not remove.
    void startBlindly(const Life& life) {
        expect(life.value(key(name_, 0), name_) == 0, told("reads what cannot be read"));
        removable_ = round_ + 1;
    }

    void saveRound(const Life& life) {
        changeAll(life);
        life.save();
        checkStored();
    }
    void changeAll(const Life& life) {
        ++round_;
        for (int i = 0; i < kKeys; ++i) keep(life, key(name_, i));
        if (round_ % 3 == 0) keep(life, added(round_));
        if (round_ % 4 == 0) removeOldest(life);
    }
    std::string added(int round) const { return name_ + "-R" + std::to_string(round); }
    void keep(const Life& life, const std::string& id) {
        life.keep(id, round_);
        own_[id] = round_;
    }
    void removeOldest(const Life& life) {
        while (removable_ <= round_ && !own_.contains(added(removable_))) ++removable_;
        if (removable_ > round_) return;
        life.remove(added(removable_));
        own_.erase(added(removable_));
    }

    void checkWhole(const std::string& text) const {
        if (text.empty()) return;  // it could not be read
        expect(isWhole(text), told("the document is torn"));
        expect(isOneSave(text, other_), told("the other's saves are mixed"));
    }
    void checkStored() const {
        const std::string text = contentOf(document());
        expect(!text.empty(), told("there is no document"));
        checkWhole(text);
        for (const auto& [id, value] : own_) {
            expect(storedValue(text, id) == value, told(id + " is not stored"));
        }
    }

    const std::string name_, other_;
    const std::filesystem::path folder_;
    int round_;
    int removable_ = 1;  // the round in which the oldest such item was added
    Values own_;
};

// ---- both --------------------------------------------------------------------------------------

class Campaign {
  public:
    explicit Campaign(int rounds) : rounds_(rounds) {
        std::filesystem::create_directories(folder_);
        inApartment([&] { seed(); });
    }
    ~Campaign() { std::filesystem::remove_all(folder_); }

    void run() {
        {
            const ChildProcess a(writer("A", 0, L"peace")), b(writer("B", 0, L"peace"));
            expectDone(a, b);
        }
        checkEnd();
        disturb();
        checkEnd();
    }

  private:
    template <class Body>
    static void inApartment(Body body) {
        check(CoInitialize(nullptr));
        expect(quietly(body), "a call of the campaign failed");
        CoUninitialize();
    }
    // What nobody touches any more.
    void seed() {
        const Life life(document_, "S");
        for (int i = 1; i <= 10; ++i) life.keep(key("S", i), seeds_[key("S", i)] = i);
        life.stop();
        const auto other = startedPreferences(document_, kApplication, L"RUI");
        check(got(other, &_UPUtil::get_Values)
                  ->SaveValue(Bstr(L"S-K1").get(), Bstr(L"S").get(), Bstr(L"7").get()));
        check(other->StopUPM());
    }

    std::wstring writer(const std::string& name, int round, const std::wstring& mode) const {
        return L"vela_merging.exe " + wide(name) + L" \"" + folder_.wstring() + L"\" " +
               std::to_wstring(round) + L" " + std::to_wstring(rounds_) + L" " + mode + L" " +
               event_;
    }
    // Keeps the document to itself from the time that A is busy until B has started.
    void disturb() {
        const NamedEvent aBegun(event_ + L"A"), bBegun(event_ + L"B"), free(event_);
        const ChildProcess a(writer("A", rounds_, L"disturbed"));
        expect(aBegun.isSetSoon(), "A does not start");
        KernelHandle lock = locked();
        const ChildProcess b(writer("B", rounds_, L"blind"));
        expect(bBegun.isSetSoon(), "B does not start");
        lock.reset();
        free.set();
        expectDone(a, b);
    }
    KernelHandle locked() const {
        for (int i = 0; i < 5000; ++i) {
            KernelHandle file(CreateFileW(document_.c_str(), GENERIC_READ, 0, nullptr,
                                          OPEN_EXISTING, 0, nullptr));
            if (file) return file;
            Sleep(1);
        }
        expect(false, "the document is always in use");
        return {};
    }
    static void expectDone(const ChildProcess& a, const ChildProcess& b) {
        for (const ChildProcess* each : {&a, &b}) {
            expect(each->exitCode(INFINITE) == 0, "a writer failed");
        }
    }

    void checkEnd() {
        inApartment([&] {
            Values expected = seeds_;
            for (const char* file : {"A.txt", "B.txt"}) {
                const Values own = valuesIn(folder_ / file);
                expect(own.size() > kKeys, "a writer kept nothing");
                expected.insert(own.begin(), own.end());
            }
            compare(expected, found(kUser));
            compare({{"S-K1", 7}}, found(L"RUI"));
        });
        for (const auto& entry : std::filesystem::directory_iterator(folder_)) {
            const std::string name = entry.path().filename().string();
            expect(name == "document.xml" || name == "A.txt" || name == "B.txt",
                   "left behind: " + name);
        }
    }
    Values found(const wchar_t* user) const {
        const auto preferences = startedPreferences(document_, kApplication, user);
        ComPtr<_IUPSection> section;
        check(got(got(preferences, &_UPUtil::get_ActiveUPM), &_UPManager::get_PreferenceSections)
                  ->get_section(Variant(L"KV"), &section));
        Values values;
        const auto items = got(section, &_IUPSection::get_Items);
        eachVariant(got(items, &_UPItems::get_NewEnum).Get(), [&](const Variant& next) {
            ComPtr<_IUPItem> item;
            check(objectIn(next)->QueryInterface(IID_PPV_ARGS(&item)));
            Bstr id;
            check(item->get_Id(id.put()));
            values[narrow(id.view())] = std::stoi(textOf(getProperty(objectIn(next), L"Value")));
            return true;
        });
        return values;
    }
    static void compare(const Values& expected, const Values& found) {
        for (const auto& [id, value] : expected) {
            const auto stored = found.find(id);
            if (stored == found.end()) expect(false, "lost: " + id);
            else expect(stored->second == value, "in the end an old value: " + id);
        }
        for (const auto& [id, value] : found) {
            expect(expected.contains(id), "removed, and there again: " + id);
        }
    }

    const int rounds_;
    const std::wstring event_ = L"vela-merging-" + std::to_wstring(GetCurrentProcessId());
    const std::filesystem::path folder_ = std::filesystem::temp_directory_path() / event_;
    const std::wstring document_ = (folder_ / "document.xml").wstring();
    Values seeds_;
};

void runWriter(char** arguments) {
    Writer writer(arguments[1], arguments[2], std::atoi(arguments[3]));
    const int rounds = std::atoi(arguments[4]);
    const std::string mode = arguments[5];
    if (mode == "peace") writer.runInPeace(rounds);
    else writer.runDisturbed(rounds, mode == "blind", wide(arguments[6]));
}

}  // namespace
}  // namespace vela::test

int main(int count, char** arguments) {
    using vela::test::failures;
    if (count == 7) {
        vela::test::runWriter(arguments);
        return failures == 0 ? 0 : 1;
    }
    const int rounds = count > 1 ? std::atoi(arguments[1]) : 500;
    vela::test::Campaign(rounds).run();
    if (failures == 0) std::printf("merging: two writers, twice %d rounds each: passed\n", rounds);
    return failures == 0 ? 0 : 1;
}
