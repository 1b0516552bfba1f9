// Starts and stops a manager together with the four preference helpers, and does the work of the
// facades while it is started.
#pragma once

#include <memory>

#include "preferences/dp_helper.h"
#include "preferences/kvp_helper.h"
#include "preferences/live_contexts.h"
#include "preferences/pp_helper.h"
#include "preferences/uip_helper.h"

namespace vela {

class UPContext : public std::enable_shared_from_this<UPContext> {
  public:
    // The one that every UPUtil made in the ordinary way uses.
    static std::shared_ptr<UPContext> shared();

    UPContext();
    ~UPContext();
    UPContext(const UPContext&) = delete;
    UPContext& operator=(const UPContext&) = delete;

    const ComPtr<UPManager>& manager() const { return manager_; }

    // Saves what is unsaved, sets the identities, registers the helpers' sections and loads them.
    // Sections that were there go, but for those that could not be written. Passes on what a store
    // raises in loading. Returns -1.
    short start(std::wstring_view applicationId, std::wstring_view userId);
    // Saves, and lets go of the helpers. Passes on what a store raises.
    void stop();
    // The same, for the last time: what one store raises keeps no other section from being saved.
    void finish();

    // The work of the facades. Nothing is raised: a failure, or a context that is not started,
    // gives false, 0 or the empty text.
    bool loadDefaultPath(std::wstring_view reference, std::wstring_view group, BSTR* path,
                         BSTR* file, BSTR* ext);
    void saveDefaultPath(std::wstring_view reference, std::wstring_view group,
                         const DefaultPath& value);
    std::wstring getValue(std::wstring_view reference, std::wstring_view group,
                          std::wstring_view defaultValue);
    void saveValue(std::wstring_view reference, std::wstring_view group, std::wstring_view value);
    bool loadWindowPos(IDispatch* window, std::wstring_view id, std::wstring_view group);
    // Does nothing unless the window's Visible reads as true.
    void saveWindowPos(IDispatch* window, std::wstring_view id, std::wstring_view group);
    bool uiSetPrintingPreferences(HWND owner, short type, std::wstring_view reference,
                                  _ISetPrinter* printer, const PrintDefaults& defaults);
    bool usePrintingPreferences(short type, std::wstring_view reference, _ISetPrinter* printer,
                                const PrintDefaults& defaults);
    short getCopies(short type, std::wstring_view reference);
    std::wstring getPrinterDescription(short type, std::wstring_view reference);

  private:
    struct Helpers {
        explicit Helpers(const ComPtr<UPManager>& manager)
            : printers(manager), windows(manager), paths(manager), values(manager) {}

        PPHelper printers;
        UIPHelper windows;
        DPHelper paths;
        KVPHelper values;
    };

    // Throws Error when the context is not started. Held by each operation for its length: what it
    // calls may stop or start the context.
    std::shared_ptr<Helpers> helpers() const;
    template <class Body>
    void serve(Body body) const;
    void rest();

    const ComPtr<UPManager> manager_;
    const std::shared_ptr<LiveContexts::State> apartment_;
    std::shared_ptr<Helpers> helpers_;
};

}  // namespace vela
