// Whole files, paths, folders, drives and file dialogs.
#pragma once

#include "contract.h"

namespace vela {

class FileUtil final : public Object<FileUtil, Unbuilt<_FileUtil>> {
  public:
    HRESULT STDMETHODCALLTYPE QueFicheiro(BSTR title, VARIANT_BOOL opens, VARIANT* name,
                                          VARIANT* control, LONG* flags, VARIANT* filter,
                                          BSTR* result) override;

    HRESULT STDMETHODCALLTYPE LerFicheiro(BSTR file, BSTR* result) override;
    HRESULT STDMETHODCALLTYPE EscreverFicheiro(BSTR file, BSTR content,
                                               VARIANT_BOOL* result) override;
    HRESULT STDMETHODCALLTYPE EncriptarParaFicheiro(BSTR content, BSTR file, BSTR* key,
                                                    VARIANT_BOOL* result) override;
    HRESULT STDMETHODCALLTYPE DesencriptarDeFicheiro(BSTR file, BSTR* key, BSTR* result) override;
    HRESULT STDMETHODCALLTYPE EncriptarFicheiroParaFicheiro(BSTR from, BSTR to, BSTR* key,
                                                            VARIANT_BOOL* result) override;
    HRESULT STDMETHODCALLTYPE DesencriptarFicheiroParaFicheiro(BSTR from, BSTR to, BSTR* key,
                                                               VARIANT_BOOL* result) override;

    HRESULT STDMETHODCALLTYPE NomeFichTemporario(BSTR* result) override;
    HRESULT STDMETHODCALLTYPE ExisteFich(BSTR path, SHORT* result) override;
    HRESULT STDMETHODCALLTYPE QuantosFicheiros(BSTR mask, SAFEARRAY** names,
                                               SHORT* result) override;
    HRESULT STDMETHODCALLTYPE QuantosFich(BSTR mask, SHORT* result) override;
    HRESULT STDMETHODCALLTYPE ApagaFicheiro(BSTR path, SHORT* result) override;
    HRESULT STDMETHODCALLTYPE TestarPermissaoEscrita(BSTR path, VARIANT_BOOL* result) override;
    HRESULT STDMETHODCALLTYPE ProbablyIsFile(BSTR path, VARIANT_BOOL* result) override;

    HRESULT STDMETHODCALLTYPE QualPercurso(BSTR path, BSTR* result) override;
    HRESULT STDMETHODCALLTYPE QualFicheiro(BSTR path, BSTR* result) override;
    HRESULT STDMETHODCALLTYPE QualExt(BSTR path, BSTR* result) override;
    HRESULT STDMETHODCALLTYPE SeparaPercursoNome(BSTR path, BSTR* folder, BSTR* file) override;
    HRESULT STDMETHODCALLTYPE SeparaPercursoNomeExt(BSTR path, BSTR* folder, BSTR* name,
                                                    BSTR* extension) override;

    HRESULT STDMETHODCALLTYPE InfoDaPasta(BSTR path, IFolder** result) override;
    HRESULT STDMETHODCALLTYPE InfoDeDrive(BSTR path, IDrive** result) override;
    HRESULT STDMETHODCALLTYPE InfoDeFicheiro(BSTR path, IFolder** folder, IDrive** drive,
                                             IFile** file) override;
    HRESULT STDMETHODCALLTYPE DrivesNoSistema(_Collection** result) override;
    HRESULT STDMETHODCALLTYPE TransformarEmUNC(BSTR path, BSTR* server, BSTR* result) override;
    HRESULT STDMETHODCALLTYPE SerialNumberEx(BSTR path, BSTR* result) override;
};

}  // namespace vela
