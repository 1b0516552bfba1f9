#include "frame/gUtil.h"

namespace vela {

HRESULT gUtil::gMD5(BSTR value, BSTR* result) { return numbers_->CriarMD5(value, result); }

HRESULT gUtil::gParteDecimal(DOUBLE value, SHORT decimals, LONG* result) {
    return numbers_->ParteDecimal(value, decimals, result);
}

HRESULT gUtil::gDataEntre(BSTR date, BSTR from, BSTR to, VARIANT_BOOL* result) {
    return dates_->DataEntre(date, from, to, result);
}

HRESULT gUtil::gDiaDaSemana(VARIANT year, VARIANT month, SHORT day, SHORT* result) {
    return dates_->DiaDaSemana(year, month, day, result);
}

HRESULT gUtil::gDiasDoMes(SHORT year, SHORT month, SHORT* result) {
    return dates_->DiasDoMes(year, month, result);
}

HRESULT gUtil::gStandardStrData(BSTR date, BSTR* result) {
    return dates_->StandardStrData(date, result);
}

HRESULT gUtil::g2expX(SHORT x, LONG* result) { return numbers_->DoisExpX(x, result); }

HRESULT gUtil::gBitTrue(LONG value, SHORT bit, VARIANT_BOOL* result) {
    return numbers_->BitTrue(value, bit, result);
}

HRESULT gUtil::gMax(VARIANT one, VARIANT other, VARIANT* result) {
    return numbers_->Max(one, other, result);
}

HRESULT gUtil::gMin(VARIANT one, VARIANT other, VARIANT* result) {
    return numbers_->Min(one, other, result);
}

HRESULT gUtil::gExisteNaCollection(IDispatch** collection, BSTR key, VARIANT_BOOL* result) {
    return system_->ExisteNaCollection(collection, key, result);
}

HRESULT gUtil::gDestroiCollection(IDispatch** collection, VARIANT_BOOL* setNothing) {
    return system_->ClearCollection(collection, setNothing);
}

HRESULT gUtil::gLerFicheiro(BSTR path, BSTR* result) { return files_->LerFicheiro(path, result); }

HRESULT gUtil::gEscreverFicheiro(BSTR path, BSTR content, VARIANT_BOOL* result) {
    return files_->EscreverFicheiro(path, content, result);
}

HRESULT gUtil::gInfoDaPasta(BSTR path, IFolder** result) {
    return files_->InfoDaPasta(path, result);
}

HRESULT gUtil::gDrivesNoSistema(_Collection** result) { return files_->DrivesNoSistema(result); }

HRESULT gUtil::gCurrentMachineName(BSTR* result) { return system_->CurrentMachineName(result); }

HRESULT gUtil::gTransformarEmUNC(BSTR path, BSTR* server, BSTR* result) {
    return files_->TransformarEmUNC(path, server, result);
}

HRESULT gUtil::gInfDeDrive(BSTR drive, IDrive** result) {
    return files_->InfoDeDrive(drive, result);
}

HRESULT gUtil::gGetPathInfo(BSTR path, IFolder** folder, IDrive** drive, IFile** file) {
    return files_->InfoDeFicheiro(path, folder, drive, file);
}

HRESULT gUtil::gLerValorLocalMachine(BSTR key, BSTR value, BSTR* result) {
    return system_->RegistryLerValorLocalMachine(key, value, result);
}

HRESULT gUtil::gStrCharValidos(BSTR* value, BSTR allowed, BSTR* result) {
    return texts_->StrCharValidos(value, allowed, result);
}

HRESULT gUtil::gCopyStr(VARIANT* from, VARIANT* to) { return texts_->CopyStr(from, to); }

HRESULT gUtil::gHora(BSTR time, SHORT* result) { return dates_->HHMM(time, result); }

HRESULT ClassOf<_gUtil>::create(REFIID id, void** result) {
    return createObject<gUtil>(id, result);
}

}  // namespace vela
