#include "support/audio/WasapiEndpoints.h"

#include <atomic>
#include <mutex>
#include <propidl.h>
#include <utility>

using Microsoft::WRL::ComPtr;

namespace {
// PKEY_Device_FriendlyName, which would need a library of its own.
constexpr PROPERTYKEY kFriendlyName{
    {0xa45c254e, 0xdf1c, 0x4efd, {0x80, 0x20, 0x67, 0xd1, 0x46, 0xa8, 0x50, 0xe0}}, 14};

QString idOf(IMMDevice* device)
{
    LPWSTR text = nullptr;
    if (!device || FAILED(device->GetId(&text)))
        return QString();
    const QString id = QString::fromWCharArray(text);
    CoTaskMemFree(text);
    return id;
}

QString nameOf(IMMDevice* device)
{
    ComPtr<IPropertyStore> properties;
    if (FAILED(device->OpenPropertyStore(STGM_READ, &properties)))
        return QString();
    PROPVARIANT value;
    PropVariantInit(&value);
    QString name;
    if (SUCCEEDED(properties->GetValue(kFriendlyName, &value)) && value.vt == VT_LPWSTR)
        name = QString::fromWCharArray(value.pwszVal);
    PropVariantClear(&value);
    return name;
}

bool isLoudspeaker(IMMDevice* device)
{
    ComPtr<IMMEndpoint> endpoint;
    EDataFlow flow = eCapture;
    return SUCCEEDED(device->QueryInterface(IID_PPV_ARGS(&endpoint))) &&
           SUCCEEDED(endpoint->GetDataFlow(&flow)) && flow == eRender;
}
} // namespace

/// What the system calls when endpoints come, go or change. It may outlive its owner by a call under way,
/// which nobody waits for.
class EndpointWatch : public IMMNotificationClient
{
public:
    explicit EndpointWatch(std::function<void()> onNews)
        : m_onNews(std::move(onNews))
    {
    }
    virtual ~EndpointWatch() = default;

    /// From now on the function is not called.
    void silence()
    {
        const std::lock_guard lock(m_mutex);
        m_onNews = nullptr;
    }

    ULONG STDMETHODCALLTYPE AddRef() override { return ++m_references; }
    ULONG STDMETHODCALLTYPE Release() override
    {
        const ULONG left = --m_references;
        if (left == 0)
            delete this;
        return left;
    }
    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID id, void** object) override
    {
        if (id != __uuidof(IUnknown) && id != __uuidof(IMMNotificationClient)) {
            *object = nullptr;
            return E_NOINTERFACE;
        }
        *object = static_cast<IMMNotificationClient*>(this);
        AddRef();
        return S_OK;
    }

    HRESULT STDMETHODCALLTYPE OnDeviceStateChanged(LPCWSTR, DWORD) override { return tell(); }
    HRESULT STDMETHODCALLTYPE OnDeviceAdded(LPCWSTR) override { return tell(); }
    HRESULT STDMETHODCALLTYPE OnDeviceRemoved(LPCWSTR) override { return tell(); }
    HRESULT STDMETHODCALLTYPE OnDefaultDeviceChanged(EDataFlow, ERole, LPCWSTR) override { return tell(); }
    HRESULT STDMETHODCALLTYPE OnPropertyValueChanged(LPCWSTR, const PROPERTYKEY key) override
    {
        return IsEqualGUID(key.fmtid, kFriendlyName.fmtid) ? tell() : S_OK;
    }

private:
    HRESULT tell()
    {
        const std::lock_guard lock(m_mutex);
        if (m_onNews)
            m_onNews();
        return S_OK;
    }

    std::mutex m_mutex; // guards what follows
    std::function<void()> m_onNews;
    std::atomic<ULONG> m_references{0};
};

WasapiEndpoints::WasapiEndpoints(std::function<void()> onNews)
    : m_onNews(std::move(onNews))
{
}

WasapiEndpoints::~WasapiEndpoints()
{
    close();
}

bool WasapiEndpoints::open()
{
    if (FAILED(
            CoCreateInstance(__uuidof(MMDeviceEnumerator), nullptr, CLSCTX_ALL, IID_PPV_ARGS(&m_enumerator))))
        return false;
    ComPtr<EndpointWatch> watch(new EndpointWatch(m_onNews));
    if (SUCCEEDED(m_enumerator->RegisterEndpointNotificationCallback(watch.Get())))
        m_watch = watch;
    return true;
}

void WasapiEndpoints::close()
{
    if (m_watch) {
        m_watch->silence();
        m_enumerator->UnregisterEndpointNotificationCallback(m_watch.Get());
    }
    m_watch.Reset();
    m_enumerator.Reset();
}

QList<WasapiEndpoints::Endpoint> WasapiEndpoints::list() const
{
    QList<Endpoint> endpoints;
    ComPtr<IMMDeviceCollection> devices;
    UINT count = 0;
    if (FAILED(m_enumerator->EnumAudioEndpoints(eAll, DEVICE_STATE_ACTIVE, &devices)) ||
        FAILED(devices->GetCount(&count)))
        return endpoints;
    const QString preferred = defaultId();
    for (UINT i = 0; i < count; ++i) {
        Endpoint endpoint;
        if (FAILED(devices->Item(i, &endpoint.device)))
            continue;
        endpoint.source.id = idOf(endpoint.device.Get());
        endpoint.source.name = nameOf(endpoint.device.Get());
        endpoint.source.isDefault = endpoint.source.id == preferred;
        endpoint.isLoudspeaker = isLoudspeaker(endpoint.device.Get());
        if (endpoint.source.isDefault)
            endpoints.prepend(endpoint);
        else if (!endpoint.source.id.isEmpty())
            endpoints.append(endpoint);
    }
    return endpoints;
}

QString WasapiEndpoints::defaultId() const
{
    ComPtr<IMMDevice> device;
    if (FAILED(m_enumerator->GetDefaultAudioEndpoint(eRender, eMultimedia, &device)))
        return QString();
    return idOf(device.Get());
}
