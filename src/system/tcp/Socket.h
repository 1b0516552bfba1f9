// The library's own socket control: a MessageSocket as an automation object.
#pragma once

#include "contract.h"
#include "system/tcp/message_socket.h"

namespace vela {

class Socket final : public Object<Socket, _Socket>, private SocketEvents {
  public:
    explicit Socket(const SocketLimits& limits = {})
        : socket_(*this, *static_cast<_Socket*>(this), limits) {}

    HRESULT STDMETHODCALLTYPE get_LocalPort(LONG* result) override;
    HRESULT STDMETHODCALLTYPE put_LocalPort(LONG newValue) override;
    HRESULT STDMETHODCALLTYPE get_RemotePort(LONG* result) override;
    HRESULT STDMETHODCALLTYPE put_RemotePort(LONG newValue) override;
    HRESULT STDMETHODCALLTYPE get_RemoteHost(BSTR* result) override;
    HRESULT STDMETHODCALLTYPE put_RemoteHost(BSTR newValue) override;
    HRESULT STDMETHODCALLTYPE get_RemoteHostIP(BSTR* result) override;
    HRESULT STDMETHODCALLTYPE get_State(SHORT* result) override;
    HRESULT STDMETHODCALLTYPE Close() override;
    HRESULT STDMETHODCALLTYPE Listen() override;
    HRESULT STDMETHODCALLTYPE Connect(VARIANT RemoteHost, VARIANT RemotePort) override;
    HRESULT STDMETHODCALLTYPE Accept(LONG requestID) override;
    HRESULT STDMETHODCALLTYPE SendData(VARIANT data) override;
    HRESULT STDMETHODCALLTYPE GetData(VARIANT* data, VARIANT type) override;

  private:
    void connected() override;
    void requested(long request) override;
    void arrived(std::size_t bytes) override;
    void sent() override;
    void peerClosed() override;
    void failed(const Error& error) override;

    MessageSocket socket_;
};

}  // namespace vela
