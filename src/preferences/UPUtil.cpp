#include "preferences/UPUtil.h"

namespace vela {

UPUtil::UPUtil(std::shared_ptr<UPContext> context) : context_(std::move(context)) {
    values_->setContext(context_);
    windows_->setContext(context_);
    printers_->setContext(context_);
}

UPUtil::~UPUtil() {
    quietly([&] { context_->finish(); });
}

HRESULT UPUtil::NewPreferences(_UPUtil** result) {
    return answer(result, [] { return make<UPUtil>(std::make_shared<UPContext>()); });
}

HRESULT UPUtil::get_ActiveUPM(_UPManager** result) {
    return answer(result, [&] { return context_->manager(); });
}

HRESULT UPUtil::get_ActiveDataSources(_UPDataSources** result) {
    return answer(result, [&] { return context_->manager()->dataSources(); });
}

HRESULT UPUtil::StartUPM(BSTR applicationId, BSTR userId, VARIANT* result) {
    return answer(result, [&] {
        Variant started;
        started.iVal = context_->start(text(applicationId), text(userId));
        started.vt = VT_I2;
        return started;
    });
}

HRESULT UPUtil::StopUPM() {
    return guard([&] { context_->stop(); });
}

HRESULT UPUtil::get_Printers(_UPPrinterUtil** result) {
    return answer(result, [&] { return printers_; });
}

HRESULT UPUtil::get_Windows(_UPWindowUtil** result) {
    return answer(result, [&] { return windows_; });
}

HRESULT UPUtil::get_Values(_UPValueUtil** result) {
    return answer(result, [&] { return values_; });
}

}  // namespace vela
