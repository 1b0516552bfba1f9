#include "preferences/pp_helper.h"

namespace vela {

namespace {

PrinterChoice choiceIn(_PPItem* item) {
    PrinterChoice choice;
    PrinterOrientation orientation = Portrait;
    choice.printer = textProperty(item, &_PPItem::get_PrinterName);
    check(item->get_Copies(&choice.copies));
    check(item->get_Orientation(&orientation));
    check(item->get_PaperBin(&choice.bin));
    check(item->get_PaperSize(&choice.size));
    choice.orientation = static_cast<short>(orientation);
    return choice;
}

// What the caller's printer is set to now; the start of a choice that nothing is stored of.
PrinterChoice choiceOf(_ISetPrinter* printer) {
    PrinterChoice choice;
    PrinterOrientation orientation = Portrait;
    choice.printer = textProperty(printer, &_ISetPrinter::get_DeviceName);
    checkRecorded(printer->get_Copies(&choice.copies));
    checkRecorded(printer->get_Orientation(&orientation));
    checkRecorded(printer->get_PaperBin(&choice.bin));
    checkRecorded(printer->get_PaperSize(&choice.size));
    choice.orientation = static_cast<short>(orientation);
    return choice;
}

void enter(const PrintDefaults& defaults, PrinterChoice& choice) {
    if (defaults.copies > 0) choice.copies = defaults.copies;
    if (defaults.orientation > 0) choice.orientation = static_cast<short>(defaults.orientation);
}

bool select(_ISetPrinter* printer, const std::wstring& name) {
    VARIANT_BOOL selected = VARIANT_TRUE;
    if (!name.empty()) checkRecorded(printer->SetPrinter(Bstr(name).get(), &selected));
    return isTrue(selected);
}

void setProperties(_ISetPrinter* printer, const PrinterChoice& choice) {
    VARIANT_BOOL done = VARIANT_FALSE;
    checkRecorded(printer->SetProperties(choice.copies,
                                         static_cast<PrinterOrientation>(choice.orientation),
                                         choice.bin, choice.size, &done));
}

}  // namespace

ComPtr<PPItem> PPHelper::choice(short type, std::wstring_view reference) const {
    return section_.getItem(reference, std::to_wstring(type));
}

bool PPHelper::apply(short type, std::wstring_view reference, _ISetPrinter* printer,
                     const PrintDefaults& defaults) const {
    if (!printer) return false;
    // A stored printer that is there no longer is as good as none.
    const auto stored = choice(type, reference);
    const bool applies = stored && select(printer, choiceIn(stored.Get()).printer);
    PrinterChoice settings = applies ? choiceIn(stored.Get()) : choiceOf(printer);
    if (!applies || defaults.override) enter(defaults, settings);
    setProperties(printer, settings);
    return applies;
}

bool PPHelper::ask(HWND owner, short type, std::wstring_view reference, _ISetPrinter* printer,
                   const PrintDefaults& defaults) const {
    const auto stored = choice(type, reference);
    PrinterChoice start;
    if (stored) start = choiceIn(stored.Get());
    else if (printer) start = choiceOf(printer);
    if (!stored || defaults.override) enter(defaults, start);

    const auto chosen = askForPrinter(owner, start);
    if (!chosen) return false;
    const auto item = section_.itemFor(reference, std::to_wstring(type));
    check(item->put_PrinterName(Bstr(chosen->printer).get()));
    check(item->put_Copies(chosen->copies));
    check(item->put_Orientation(static_cast<PrinterOrientation>(chosen->orientation)));
    check(item->put_PaperBin(chosen->bin));
    check(item->put_PaperSize(chosen->size));
    section_.addItem(item);
    if (printer && select(printer, chosen->printer)) setProperties(printer, *chosen);
    return true;
}

}  // namespace vela
