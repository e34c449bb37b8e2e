#pragma once

#include <unknwn.h>
#include <wrl/client.h>

#include <atomic>

/// Takes over a pointer that comes with a reference. ComPtr::Attach() is there for that, but MinGW's takes one more.
template<typename Interface>
[[nodiscard]] Microsoft::WRL::ComPtr<Interface> adopt(Interface *object)
{
    Microsoft::WRL::ComPtr<Interface> pointer;
    *pointer.GetAddressOf() = object;
    return pointer;
}

/// IUnknown for a class that implements \a Interface: made with one reference, destroyed with the last.
template<typename Interface>
class ReferenceCounted : public Interface
{
public:
    ReferenceCounted() = default;
    virtual ~ReferenceCounted() = default;
    ReferenceCounted(const ReferenceCounted &) = delete;
    ReferenceCounted(ReferenceCounted &&) = delete;
    ReferenceCounted &operator=(const ReferenceCounted &) = delete;
    ReferenceCounted &operator=(ReferenceCounted &&) = delete;

    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID iid, void **object) override
    {
        if (object == nullptr)
            return E_POINTER;
        const bool known = iid == __uuidof(IUnknown) || implements(iid);
        *object = known ? static_cast<Interface *>(this) : nullptr;
        if (!known)
            return E_NOINTERFACE;
        AddRef();
        return S_OK;
    }

    ULONG STDMETHODCALLTYPE AddRef() override { return ++m_references; }

    ULONG STDMETHODCALLTYPE Release() override
    {
        const ULONG references = --m_references;
        if (references == 0)
            delete this;
        return references;
    }

private:
    /// True for the interfaces beside IUnknown.
    [[nodiscard]] virtual bool implements(REFIID iid) const = 0;

    std::atomic<ULONG> m_references = 1;
};
