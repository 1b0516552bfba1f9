// What the user's settings decide: his country and his sounds. The tests change them, and put back
// what was there.
#include <filesystem>

#include "support/support.h"
#include "system/GeoUtil.h"
#include "system/sounds.h"

namespace vela {
namespace {

// A text among the user's settings while it lives.
class Setting {
  public:
    Setting(const std::wstring& key, const wchar_t* name, std::wstring_view value,
            DWORD type = REG_SZ)
        : key_(key), name_(name) {
        known_ = RegGetValueW(HKEY_CURRENT_USER, key_.c_str(), name, RRF_RT_ANY | RRF_NOEXPAND,
                              &type_, before_, &size_) == ERROR_SUCCESS;
        store(type, value.data(), static_cast<DWORD>((value.size() + 1) * sizeof(wchar_t)));
    }
    ~Setting() {
        if (known_) store(type_, before_, size_);
        else RegDeleteKeyValueW(HKEY_CURRENT_USER, key_.c_str(), name_);
    }
    Setting(const Setting&) = delete;
    Setting& operator=(const Setting&) = delete;

  private:
    void store(DWORD type, const wchar_t* value, DWORD size) {
        EXPECT_EQ(RegSetKeyValueW(HKEY_CURRENT_USER, key_.c_str(), name_, type, value, size), 0);
    }
    const std::wstring key_;
    const wchar_t* const name_;
    wchar_t before_[512] = L"";
    DWORD size_ = sizeof before_;
    DWORD type_ = REG_SZ;
    bool known_ = false;
};

std::wstring geo(const wchar_t* member) {
    const auto object = make<GeoUtil>();
    const test::Called called = test::call(object.Get(), member);
    EXPECT_EQ(called.outcome, S_OK);
    return textOf(called.result);
}

TEST(SystemGeography, FollowsTheCountryThatIsSet) {
    const wchar_t* const members[] = {L"OSGeoNation", L"GeoISO2",       L"OSGeoISO3",
                                      L"GeoRFC1766",  L"GeoLanguageID", L"OSGeoOfficialName",
                                      L"GeoLatitude", L"GeoLongitude"};
    const wchar_t* const countries[][5] = {{L"193", L"PT", L"PRT", L"pt-pt", L"2070"},
                                           {L"32", L"BR", L"BRA", L"pt-br", L"1046"},
                                           {L"244", L"US", L"USA", L"en-us", L"1033"}};
    for (const auto& country : countries) {
        const Setting setting(L"Control Panel\\International\\Geo", L"Nation", country[0]);
        for (int i = 0; i < 5; ++i) EXPECT_EQ(geo(members[i]), country[i]);
        EXPECT_NE(geo(L"OSGeoOfficialName"), L"");
        // Where no position is known, none must come out, and not one off Africa.
        for (const wchar_t* degrees : {L"GeoLatitude", L"GeoLongitude"}) {
            EXPECT_FALSE(geo(degrees).starts_with(L"0"));
        }
    }
    for (const wchar_t* nation : {L"999999", L"39070", L"none"}) {
        const Setting setting(L"Control Panel\\International\\Geo", L"Nation", nation);
        for (const wchar_t* member : members) EXPECT_EQ(geo(member), L"") << member;
    }
}

TEST(SystemSounds, AreTheFilesThatTheUserHasChosen) {
    wchar_t windows[MAX_PATH];
    GetWindowsDirectoryW(windows, MAX_PATH);
    for (const auto& [sound, key] : {std::pair(Sound::Mail, L".Default\\MailBeep"),
                                     std::pair(Sound::Recycle, L"Explorer\\EmptyRecycleBin")}) {
        const std::wstring path = std::wstring(L"AppEvents\\Schemes\\Apps\\") + key + L"\\.Current";
        const Setting chosen(path, nullptr, L"%SystemRoot%\\none.wav", REG_EXPAND_SZ);
        const std::wstring wanted = std::wstring(windows) + L"\\none.wav";
        EXPECT_EQ(lstrcmpiW(soundFile(sound).c_str(), wanted.c_str()), 0)
            << std::filesystem::path(soundFile(sound));
        const Setting silence(path, nullptr, L"");
        EXPECT_EQ(soundFile(sound), L"");
    }
}

}  // namespace
}  // namespace vela
