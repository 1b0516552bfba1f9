#include "preferences/up_context.h"

#include "runtime/apartment.h"

namespace vela {

namespace {

using Contexts = std::set<UPContext*>;

// A client that forgets to stop loses nothing: at the apartment's end every context does.
struct LiveContexts {
    const std::shared_ptr<Contexts> all = std::make_shared<Contexts>();

    void end() {
        for (UPContext* context : Contexts(*all)) {
            // One that stops may take others with it, and itself.
            quietly([&] {
                if (all->contains(context)) context->shared_from_this()->stop();
            });
        }
    }
};

struct SharedContext {
    const std::shared_ptr<UPContext> context = std::make_shared<UPContext>();
};

std::wstring lowerCase(std::wstring text) {
    CharLowerBuffW(text.data(), static_cast<DWORD>(text.size()));
    return text;
}

void registerSections(UPManager& manager, Existing existing) {
    const std::wstring local = manager.dataSources()->localName();
    const std::wstring shared = manager.dataSources()->sharedName();
    registerSection(manager, kPPSection, local, existing);
    registerSection(manager, kUISection, local, existing);
    registerSection(manager, kDPSection, shared, existing);
    registerSection(manager, kKVSection, shared, existing);
}

// Report parameters are registered by their own manager, so no start registers them again. For
// other identities they are read anew, from the store that they have.
void renewReportParameters(UPManager& manager) {
    const ComPtr<_IUPSection> old = manager.section(kRPSection.id);
    if (!old) return;
    ComPtr<_IUPDataSource> store;
    checkRecorded(old->get_DataSourceManager(&store));
    const ComPtr<_IUPSection> renewed = makeSection(kRPSection);
    checkRecorded(renewed->putref_DataSourceManager(store.Get()));
    manager.add(renewed);
}

}  // namespace

std::shared_ptr<UPContext> UPContext::shared() { return apartmentLocal<SharedContext>().context; }

UPContext::UPContext()
    : manager_(make<UPManager>()), siblings_(apartmentLocal<LiveContexts>().all) {
    siblings_->insert(this);
}

UPContext::~UPContext() { siblings_->erase(this); }

short UPContext::start(std::wstring_view applicationId, std::wstring_view userId) {
    UPManager& manager = *manager_.Get();
    const bool same = manager.isFor(applicationId, userId);
    if (!same && manager.loaded()) manager.save();  // what is new belongs to the old identities
    manager.setApplicationId(applicationId);
    manager.setUserId(userId);
    helpers_ = std::make_shared<Helpers>(manager_);
    registerSections(manager, same ? Existing::Kept : Existing::Replaced);
    if (!same) renewReportParameters(manager);
    manager.load();
    return -1;
}

void UPContext::stop() {
    manager_->save();
    helpers_.reset();
    manager_->setLoaded(false);
}

std::shared_ptr<UPContext::Helpers> UPContext::helpers() const {
    if (!helpers_) raise(RuntimeError::InvalidProcedureCall);
    return helpers_;
}

bool UPContext::loadDefaultPath(std::wstring_view reference, std::wstring_view group, BSTR* path,
                                BSTR* file, BSTR* ext) {
    bool found = false;
    quietly([&] {
        const auto stored = helpers()->paths.path(reference, group);
        if (!stored) return;
        rewrite(path, stored->path);
        rewrite(file, stored->file);
        rewrite(ext, stored->ext);
        found = true;
    });
    return found;
}

void UPContext::saveDefaultPath(std::wstring_view reference, std::wstring_view group,
                                const DefaultPath& value) {
    quietly([&] { helpers()->paths.savePath(reference, group, value); });
}

std::wstring UPContext::getValue(std::wstring_view reference, std::wstring_view group,
                                 std::wstring_view defaultValue) {
    std::wstring value;
    quietly([&] { value = helpers()->values.value(reference, group, defaultValue); });
    return value;
}

void UPContext::saveValue(std::wstring_view reference, std::wstring_view group,
                          std::wstring_view value) {
    quietly([&] { helpers()->values.saveValue(reference, group, value); });
}

bool UPContext::loadWindowPos(IDispatch* window, std::wstring_view id, std::wstring_view group) {
    bool found = false;
    quietly([&] {
        if (window) found = helpers()->windows.loadPosition(window, id, group);
    });
    return found;
}

void UPContext::saveWindowPos(IDispatch* window, std::wstring_view id, std::wstring_view group) {
    quietly([&] {
        if (!window || !isTrue(converted(getProperty(window, L"Visible"), VT_BOOL).boolVal)) return;
        helpers()->windows.savePosition(window, id, group);
    });
}

bool UPContext::uiSetPrintingPreferences(HWND owner, short type, std::wstring_view reference,
                                         _ISetPrinter* printer, const PrintDefaults& defaults) {
    bool chosen = false;
    quietly([&] { chosen = helpers()->printers.ask(owner, type, reference, printer, defaults); });
    return chosen;
}

bool UPContext::usePrintingPreferences(short type, std::wstring_view reference,
                                       _ISetPrinter* printer, const PrintDefaults& defaults) {
    bool applied = false;
    quietly([&] { applied = helpers()->printers.apply(type, reference, printer, defaults); });
    return applied;
}

short UPContext::getCopies(short type, std::wstring_view reference) {
    short copies = 0;
    quietly([&] {
        if (const auto item = helpers()->printers.choice(type, reference)) {
            check(item->get_Copies(&copies));
        }
    });
    return copies;
}

std::wstring UPContext::getPrinterDescription(short type, std::wstring_view reference) {
    std::wstring description;
    quietly([&] {
        const auto item = helpers()->printers.choice(type, reference);
        if (!item) return;
        short copies = 0;
        check(item->get_Copies(&copies));
        description = lowerCase(textProperty<_PPItem>(item.Get(), &_PPItem::get_PrinterName));
        if (copies >= 2) description += L" (" + std::to_wstring(copies) + L" cópias)";
    });
    return description;
}

}  // namespace vela
