#include "preferences/up_context.h"

#include "preferences/UPDataSourceXML.h"
#include "preferences/document_cache.h"
#include "runtime/apartment.h"
#include "text/core/upper_case.h"

namespace vela {

namespace {

struct SharedContext {
    const std::shared_ptr<UPContext> context = std::make_shared<UPContext>();
};

void registerSections(UPManager& manager, Unsaved unsaved) {
    UPDataSources& sources = *manager.dataSources().Get();
    sources.settle();
    const auto local = [&] {
        return make<UPDataSourceXML>(sources.localName(), sources.localPath());
    };
    const auto shared = [&] {
        return make<UPDataSourceXML>(sources.sharedName(), sources.sharedPath());
    };
    registerSection(manager, kPPSection, local(), unsaved);
    registerSection(manager, kUISection, local(), unsaved);
    registerSection(manager, kDPSection, shared(), unsaved);
    registerSection(manager, kKVSection, shared(), unsaved);
}

// Report parameters are registered by their own manager, so no start registers them again: they are
// read anew, from the store that they have.
void renewReportParameters(UPManager& manager, Unsaved unsaved) {
    const ComPtr<_IUPSection> old = manager.section(kRPSection.id);
    if (!own<RPSection>(old.Get())) return;
    registerSection(manager, kRPSection, storeOf(old.Get()), unsaved);
}

}  // namespace

std::shared_ptr<UPContext> UPContext::shared() { return apartmentLocal<SharedContext>().context; }

UPContext::UPContext()
    : manager_(make<UPManager>()), apartment_(apartmentLocal<LiveContexts>().state()) {
    apartment_->contexts.insert(this);
}

UPContext::~UPContext() { apartment_->contexts.erase(this); }

short UPContext::start(std::wstring_view applicationId, std::wstring_view userId) {
    UPManager& manager = *manager_.Get();
    manager.saveForStart();  // what is new belongs to the old identities, and to the old documents
    forgetDocuments();
    const UserPath before(manager.applicationId(), manager.userId());
    manager.setApplicationId(applicationId);
    manager.setUserId(userId);
    const bool same = before == UserPath(manager.applicationId(), manager.userId());
    const auto unsaved = same ? Unsaved::Stays : Unsaved::Replaced;
    helpers_ = std::make_shared<Helpers>(manager_);
    registerSections(manager, unsaved);
    renewReportParameters(manager, unsaved);
    manager.load();
    return -1;
}

void UPContext::stop() {
    manager_->save();
    rest();
}

void UPContext::finish() {
    manager_->saveEach();
    rest();
}

void UPContext::rest() {
    helpers_.reset();
    manager_->setLoaded(false);
}

// One call of a facade.
template <class Body>
void UPContext::serve(Body body) const {
    const LiveContexts::Call call;
    quietly(body);
}

std::shared_ptr<UPContext::Helpers> UPContext::helpers() const {
    if (!helpers_) raise(RuntimeError::InvalidProcedureCall);
    return helpers_;
}

bool UPContext::loadDefaultPath(std::wstring_view reference, std::wstring_view group, BSTR* path,
                                BSTR* file, BSTR* ext) {
    bool found = false;
    serve([&] {
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
    serve([&] { helpers()->paths.savePath(reference, group, value); });
}

std::wstring UPContext::getValue(std::wstring_view reference, std::wstring_view group,
                                 std::wstring_view defaultValue) {
    std::wstring value;
    serve([&] { value = helpers()->values.value(reference, group, defaultValue); });
    return value;
}

void UPContext::saveValue(std::wstring_view reference, std::wstring_view group,
                          std::wstring_view value) {
    serve([&] { helpers()->values.saveValue(reference, group, value); });
}

bool UPContext::loadWindowPos(IDispatch* window, std::wstring_view id, std::wstring_view group) {
    bool found = false;
    serve([&] {
        if (window) found = helpers()->windows.loadPosition(window, id, group);
    });
    return found;
}

void UPContext::saveWindowPos(IDispatch* window, std::wstring_view id, std::wstring_view group) {
    serve([&] {
        if (!window || !isTrue(converted(getProperty(window, L"Visible"), VT_BOOL).boolVal)) return;
        helpers()->windows.savePosition(window, id, group);
    });
}

bool UPContext::uiSetPrintingPreferences(HWND owner, short type, std::wstring_view reference,
                                         _ISetPrinter* printer, const PrintDefaults& defaults) {
    bool chosen = false;
    serve([&] { chosen = helpers()->printers.ask(owner, type, reference, printer, defaults); });
    return chosen;
}

bool UPContext::usePrintingPreferences(short type, std::wstring_view reference,
                                       _ISetPrinter* printer, const PrintDefaults& defaults) {
    bool applied = false;
    serve([&] { applied = helpers()->printers.apply(type, reference, printer, defaults); });
    return applied;
}

short UPContext::getCopies(short type, std::wstring_view reference) {
    short copies = 0;
    serve([&] {
        if (const auto item = helpers()->printers.choice(type, reference)) {
            check(item->get_Copies(&copies));
        }
    });
    return copies;
}

std::wstring UPContext::getPrinterDescription(short type, std::wstring_view reference) {
    std::wstring description;
    serve([&] {
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
