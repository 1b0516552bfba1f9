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
    Setting(const wchar_t* key, const wchar_t* name, std::wstring_view value, DWORD type = REG_SZ)
        : key_(key), name_(name) {
        DWORD size = sizeof before_;
        known_ = RegGetValueW(HKEY_CURRENT_USER, key, name, kTypes, &type_, before_, &size) ==
                 ERROR_SUCCESS;
        store(value, type);
    }
    ~Setting() {
        if (known_) store(before_, type_);
        else RegDeleteKeyValueW(HKEY_CURRENT_USER, key_, name_);
    }
    Setting(const Setting&) = delete;
    Setting& operator=(const Setting&) = delete;

  private:
    static constexpr DWORD kTypes = RRF_RT_REG_SZ | RRF_RT_REG_EXPAND_SZ | RRF_NOEXPAND;

    void store(std::wstring_view value, DWORD type) {
        EXPECT_EQ(RegSetKeyValueW(HKEY_CURRENT_USER, key_, name_, type, value.data(),
                                  static_cast<DWORD>((value.size() + 1) * sizeof(wchar_t))),
                  ERROR_SUCCESS);
    }
    const wchar_t* key_;
    const wchar_t* name_;
    wchar_t before_[512] = L"";
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
    struct Case {
        const wchar_t* nation;
        const wchar_t* iso2;
        const wchar_t* iso3;
        const wchar_t* tag;
        const wchar_t* language;
        double latitude;
        double longitude;
    };
    for (const Case& each : {Case{L"193", L"PT", L"PRT", L"pt-pt", L"2070", 39.5, -8},
                             {L"32", L"BR", L"BRA", L"pt-br", L"1046", -14, -55},
                             {L"244", L"US", L"USA", L"en-us", L"1033", 39, -97},
                             {L"217", L"ES", L"ESP", L"es-es", L"3082", 40, -4}}) {
        const Setting setting(L"Control Panel\\International\\Geo", L"Nation", each.nation);
        EXPECT_EQ(geo(L"OSGeoNation"), each.nation);
        EXPECT_EQ(geo(L"GeoISO2"), each.iso2);
        EXPECT_EQ(geo(L"OSGeoISO3"), each.iso3);
        EXPECT_EQ(geo(L"GeoRFC1766"), each.tag);
        EXPECT_EQ(geo(L"GeoLanguageID"), each.language);
        EXPECT_NE(geo(L"OSGeoOfficialName"), L"");
        // Wine knows no positions, which must not come out as one off Africa.
        const std::wstring latitude = geo(L"GeoLatitude");
        const std::wstring longitude = geo(L"GeoLongitude");
        EXPECT_EQ(latitude.empty(), longitude.empty());
        if (latitude.empty() || longitude.empty()) continue;
        EXPECT_NEAR(std::stod(latitude), each.latitude, 5);
        EXPECT_NEAR(std::stod(longitude), each.longitude, 5);
    }
    for (const wchar_t* nation : {L"999999", L"39070", L"none"}) {
        const Setting setting(L"Control Panel\\International\\Geo", L"Nation", nation);
        for (const wchar_t* member :
             {L"OSGeoISO3", L"OSGeoOfficialName", L"OSGeoNation", L"GeoLanguageID", L"GeoLatitude",
              L"GeoLongitude", L"GeoISO2", L"GeoRFC1766"}) {
            EXPECT_EQ(geo(member), L"") << std::filesystem::path(member);
        }
    }
}

TEST(SystemSounds, AreTheFilesThatTheUserHasChosen) {
    wchar_t windows[MAX_PATH];
    GetWindowsDirectoryW(windows, MAX_PATH);
    for (const auto& [sound, key] :
         {std::pair(Sound::Mail, L".Default\\MailBeep"),
          std::pair(Sound::Alert, L".Default\\SystemExclamation"),
          std::pair(Sound::Notification, L".Default\\SystemNotification"),
          std::pair(Sound::Recycle, L"Explorer\\EmptyRecycleBin"),
          std::pair(Sound::CriticalStop, L".Default\\SystemHand"),
          std::pair(Sound::DeviceConnect, L".Default\\DeviceConnect"),
          std::pair(Sound::DeviceDisconnect, L".Default\\DeviceDisconnect"),
          std::pair(Sound::DeviceFail, L".Default\\DeviceFail")}) {
        const std::wstring path = std::wstring(L"AppEvents\\Schemes\\Apps\\") + key + L"\\.Current";
        const Setting chosen(path.c_str(), nullptr, L"%SystemRoot%\\none.wav", REG_EXPAND_SZ);
        const std::wstring wanted = std::wstring(windows) + L"\\none.wav";
        EXPECT_EQ(lstrcmpiW(soundFile(sound).c_str(), wanted.c_str()), 0)
            << std::filesystem::path(soundFile(sound));
        const Setting silence(path.c_str(), nullptr, L"");
        EXPECT_EQ(soundFile(sound), L"");
    }
}

}  // namespace
}  // namespace vela
