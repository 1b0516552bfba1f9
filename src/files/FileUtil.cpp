#include "files/FileUtil.h"

#include "collections/Collection.h"
#include "files/core/path_parts.h"
#include "files/delete_file.h"
#include "files/drives.h"
#include "files/file_dialog.h"
#include "files/file_search.h"
#include "files/file_state.h"
#include "files/runtime_objects.h"
#include "files/text_file.h"
#include "text/text_arrays.h"

namespace vela {

namespace {

constexpr SHORT kYes = -1;

// The path that a caller gave; empty, which is nowhere, for one that the platform would read only
// in part.
std::wstring pathIn(BSTR value) {
    const std::wstring_view path = text(value);
    return std::wstring(path.find(L'\0') == path.npos ? path : std::wstring_view());
}

std::wstring optionalTextIn(const VARIANT* value) {
    return value && !isMissing(dereferenced(*value)) ? textOf(*value) : L"";
}

// Puts a value where a caller passed a place for one.
void fillIn(VARIANT* target, Variant value) {
    if (!target) return;
    auto& place = const_cast<VARIANT&>(dereferenced(*target));
    if (place.vt & VT_BYREF) storeThroughReference(&place, &value);
    else std::swap(place, static_cast<VARIANT&>(value));
}
template <class Interface>
void fillIn(Interface** target, ComPtr<Interface> object) {
    if (target) adopted(std::exchange(*target, object.Detach()));
}

}  // namespace

HRESULT FileUtil::QueFicheiro(BSTR title, VARIANT_BOOL opens, VARIANT* name, VARIANT* control,
                              LONG* flags, VARIANT* filter, BSTR* result) {
    return answerQuietly(result, [&] {
        const FileQuestion question{std::wstring(text(title)), isTrue(opens), optionalTextIn(name),
                                    optionalTextIn(filter), flags ? *flags : 0};
        IDispatch* const dialog = control ? objectIn(*control) : nullptr;
        const auto choice = dialog ? askForFile(dialog, question) : askForFile(question);
        if (!choice) return std::wstring();
        fillIn(name, Variant(std::wstring_view(fileOf(choice->path))));
        if (flags) *flags = choice->flags;
        return choice->path;
    });
}

// ---- whole files --------------------------------------------------------------------------------

HRESULT FileUtil::LerFicheiro(BSTR file, BSTR* result) {
    return answerQuietly(result, [&] { return readText(pathIn(file)); });
}

HRESULT FileUtil::EscreverFicheiro(BSTR file, BSTR content, VARIANT_BOOL* result) {
    return answer(result, [&] { return quietly([&] { writeText(pathIn(file), text(content)); }); });
}

HRESULT FileUtil::EncriptarParaFicheiro(BSTR content, BSTR file, BSTR* key, VARIANT_BOOL* result) {
    return answer(result, [&] {
        return quietly([&] { writeEncrypted(pathIn(file), text(content), optionalText(key)); });
    });
}

HRESULT FileUtil::DesencriptarDeFicheiro(BSTR file, BSTR* key, BSTR* result) {
    return answerQuietly(result, [&] { return readEncrypted(pathIn(file), optionalText(key)); });
}

HRESULT FileUtil::EncriptarFicheiroParaFicheiro(BSTR from, BSTR to, BSTR* key,
                                                VARIANT_BOOL* result) {
    return answer(result, [&] {
        return quietly([&] { encryptFile(pathIn(from), pathIn(to), optionalText(key)); });
    });
}

HRESULT FileUtil::DesencriptarFicheiroParaFicheiro(BSTR from, BSTR to, BSTR* key,
                                                   VARIANT_BOOL* result) {
    return answer(result, [&] {
        return quietly([&] { decryptFile(pathIn(from), pathIn(to), optionalText(key)); });
    });
}

// ---- what is there ------------------------------------------------------------------------------

HRESULT FileUtil::NomeFichTemporario(BSTR* result) {
    return answerQuietly(result, newTemporaryFile);
}

HRESULT FileUtil::ExisteFich(BSTR path, SHORT* result) {
    return answer(result, [&] { return fileExists(pathIn(path)) ? kYes : SHORT{0}; });
}

HRESULT FileUtil::QuantosFicheiros(BSTR mask, SAFEARRAY** names, SHORT* result) {
    return answer(result, [&] {
        const std::vector<std::wstring> found = namesOfFiles(pathIn(mask));
        const SHORT count = count16(found.size());
        rewrite(names, {found.begin(), found.end()});
        return count;
    });
}

HRESULT FileUtil::QuantosFich(BSTR mask, SHORT* result) {
    return answer(result, [&] { return count16(countFiles(pathIn(mask))); });
}

HRESULT FileUtil::ApagaFicheiro(BSTR path, SHORT* result) {
    return answer(result, [&] { return deleteFile(pathIn(path)) ? kYes : SHORT{0}; });
}

HRESULT FileUtil::TestarPermissaoEscrita(BSTR path, VARIANT_BOOL* result) {
    return answer(result, [&] { return canBeWritten(pathIn(path)); });
}

HRESULT FileUtil::ProbablyIsFile(BSTR path, VARIANT_BOOL* result) {
    return answer(result, [&] { return isProbablyFile(pathIn(path)); });
}

// ---- the parts of a path ------------------------------------------------------------------------

HRESULT FileUtil::QualPercurso(BSTR path, BSTR* result) {
    return answer(result, [&] { return folderOf(text(path)); });
}

HRESULT FileUtil::QualFicheiro(BSTR path, BSTR* result) {
    return answer(result, [&] { return fileOf(text(path)); });
}

HRESULT FileUtil::QualExt(BSTR path, BSTR* result) {
    return answer(result, [&] { return partsOf(text(path)).extension; });
}

HRESULT FileUtil::SeparaPercursoNome(BSTR path, BSTR* folder, BSTR* file) {
    return guard([&] {
        const std::wstring whole(text(path));
        rewrite(folder, folderOf(whole));
        rewrite(file, fileOf(whole));
    });
}

HRESULT FileUtil::SeparaPercursoNomeExt(BSTR path, BSTR* folder, BSTR* name, BSTR* extension) {
    return guard([&] {
        const PathParts parts = partsOf(text(path));
        rewrite(folder, parts.folder);
        rewrite(name, parts.name);
        rewrite(extension, parts.extension);
    });
}

// ---- folders and drives -------------------------------------------------------------------------

HRESULT FileUtil::InfoDaPasta(BSTR path, IFolder** result) {
    return answerQuietly(result, [&] { return folderObject(pathIn(path)); });
}

HRESULT FileUtil::InfoDeDrive(BSTR path, IDrive** result) {
    return answerQuietly(result, [&] { return driveObject(pathIn(path)); });
}

HRESULT FileUtil::InfoDeFicheiro(BSTR path, IFolder** folder, IDrive** drive, IFile** file) {
    return guard([&] {
        PathObjects objects = objectsAt(pathIn(path));
        fillIn(folder, std::move(objects.folder));
        fillIn(drive, std::move(objects.drive));
        fillIn(file, std::move(objects.file));
    });
}

HRESULT FileUtil::DrivesNoSistema(_Collection** result) {
    return answer(result, [&] {
        auto drives = make<Collection>();
        for (const std::wstring& letter : driveLetters()) {
            quietly([&] { drives->entries().add(Variant(driveObject(letter).Get()), letter); });
        }
        return drives;
    });
}

HRESULT FileUtil::TransformarEmUNC(BSTR path, BSTR* server, BSTR* result) {
    return answer(result, [&] {
        const SharePath share = sharePath(pathIn(path));
        rewrite(server, share.server);
        return share.server.empty() ? std::wstring(text(path)) : share.path;
    });
}

HRESULT FileUtil::SerialNumberEx(BSTR path, BSTR* result) {
    return answer(result, [&] { return serialNumber(pathIn(path)); });
}

HRESULT ClassOf<_FileUtil>::create(REFIID id, void** result) {
    return createObject<FileUtil>(id, result);
}

}  // namespace vela
