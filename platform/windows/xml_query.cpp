#include "platform/xml_query.h"

#include "platform/text.h"
#include "platform/windows/lazy_library.h"

#include <windows.h>

#include <msxml2.h>
#include <objbase.h>
#include <oleauto.h>
#include <limits>
#include <memory>
#include <new>
#include <string>

namespace platform {
namespace {

constexpr wchar_t kComLibrary[] = L"ole32.dll";
constexpr wchar_t kAutomationLibrary[] = L"oleaut32.dll";

LazyFunction<decltype(&::CoInitializeEx)> coInitialize(kComLibrary, "CoInitializeEx");
LazyFunction<decltype(&::CoUninitialize)> coUninitialize(kComLibrary, "CoUninitialize");
LazyFunction<decltype(&::CoCreateInstance)> coCreateInstance(kComLibrary, "CoCreateInstance");
LazyFunction<decltype(&::SysAllocStringLen)> allocateText(kAutomationLibrary, "SysAllocStringLen");
LazyFunction<decltype(&::SysStringLen)> lengthOfText(kAutomationLibrary, "SysStringLen");
LazyFunction<decltype(&::SysFreeString)> freeText(kAutomationLibrary, "SysFreeString");

// The class of the system's XML document, and the interface through which we use it.
constexpr CLSID kDocumentClass = {
    0x2933BF90, 0x7B36, 0x11D2, {0xB2, 0x0E, 0x00, 0xC0, 0x4F, 0x98, 0x3E, 0x60}};
constexpr IID kDocumentInterface = {
    0x2933BF81, 0x7B36, 0x11D2, {0xB2, 0x0E, 0x00, 0xC0, 0x4F, 0x98, 0x3E, 0x60}};
// The later interface of the same document, which can set properties by name.
constexpr IID kDocumentWithProperties = {
    0x2933BF95, 0x7B36, 0x11D2, {0xB2, 0x0E, 0x00, 0xC0, 0x4F, 0x98, 0x3E, 0x60}};

bool isServiceThere() noexcept {
    return coInitialize.get() != nullptr && coUninitialize.get() != nullptr &&
           coCreateInstance.get() != nullptr && allocateText.get() != nullptr &&
           lengthOfText.get() != nullptr && freeText.get() != nullptr;
}

// Initialises COM for this thread. If the thread has initialised COM in another mode already, our
// call fails. The document works in that mode too, and we must not undo what we did not do.
class ComScope {
public:
    ComScope() noexcept : _isOurs(SUCCEEDED(coInitialize.get()(nullptr, COINIT_MULTITHREADED))) {}
    ~ComScope() {
        if (_isOurs) coUninitialize.get()();
    }
    ComScope(const ComScope&) = delete;
    ComScope& operator=(const ComScope&) = delete;

private:
    bool _isOurs;
};

struct Release {
    void operator()(IUnknown* object) const noexcept { object->Release(); }
};
template <typename Interface>
using ComPointer = std::unique_ptr<Interface, Release>;

struct FreeText {
    using pointer = BSTR;
    void operator()(BSTR text) const noexcept { freeText.get()(text); }
};
using ComText = std::unique_ptr<BSTR, FreeText>;

ComText comText(const std::wstring& text) {
    if (text.size() > std::numeric_limits<UINT>::max()) throw std::bad_alloc();
    ComText copy(allocateText.get()(text.data(), static_cast<UINT>(text.size())));
    if (copy == nullptr) throw std::bad_alloc();
    return copy;
}

ComPointer<IXMLDOMDocument> newDocument() noexcept {
    void* document = nullptr;
    const HRESULT result =
        coCreateInstance.get()(kDocumentClass, nullptr, CLSCTX_INPROC_SERVER | CLSCTX_LOCAL_SERVER,
                               kDocumentInterface, &document);
    return ComPointer<IXMLDOMDocument>(SUCCEEDED(result) ? static_cast<IXMLDOMDocument*>(document)
                                                         : nullptr);
}

// Makes the parser refuse a document type definition. The device's pages have none. The entities of
// a hostile one could name files of this computer, or name each other until a page of a few
// kilobytes fills the memory.
bool prohibitTypeDefinition(IXMLDOMDocument& document) {
    void* found = nullptr;
    if (FAILED(document.QueryInterface(kDocumentWithProperties, &found))) return false;
    const ComPointer<IXMLDOMDocument2> properties(static_cast<IXMLDOMDocument2*>(found));
    const ComText name = comText(L"ProhibitDTD");
    VARIANT yes = {};
    yes.vt = VT_BOOL;
    yes.boolVal = VARIANT_TRUE;
    return SUCCEEDED(properties->setProperty(name.get(), yes));
}

// Asks after loading too, because not every parser obeys ProhibitDTD (Wine's does not).
bool hasTypeDefinition(IXMLDOMDocument& document) {
    IXMLDOMDocumentType* type = nullptr;
    const HRESULT result = document.get_doctype(&type);
    const ComPointer<IXMLDOMDocumentType> owned(type);
    return FAILED(result) || type != nullptr;
}

bool load(IXMLDOMDocument& document, std::string_view text) {
    // Equally right with true: a document that was not loaded has no nodes.
    if (!prohibitTypeDefinition(document)) return false;
    // A page must not make the parser read files of this computer or fetch anything from the net.
    document.put_resolveExternals(VARIANT_FALSE);
    document.put_validateOnParse(VARIANT_FALSE);
    VARIANT_BOOL isLoaded = VARIANT_FALSE;
    const ComText source = comText(widened(text));
    return document.loadXML(source.get(), &isLoaded) == S_OK && isLoaded != VARIANT_FALSE &&
           !hasTypeDefinition(document);
}

ComPointer<IXMLDOMNode> select(IXMLDOMDocument& document, const char* path) {
    IXMLDOMNode* node = nullptr;
    const ComText query = comText(widened(path));
    const HRESULT result = document.selectSingleNode(query.get(), &node);
    return ComPointer<IXMLDOMNode>(SUCCEEDED(result) ? node : nullptr);
}

}  // namespace

bool queryXml(std::string_view document, const char* path, std::string& out) {
    out.clear();
    if (!isServiceThere()) return false;
    const ComScope com;  // declared first, so that it is destroyed after every object below
    const auto loaded = newDocument();
    if (loaded == nullptr || !load(*loaded, document)) return false;
    const auto node = select(*loaded, path);
    if (node == nullptr) return false;

    BSTR text = nullptr;
    if (FAILED(node->get_text(&text))) return false;
    const ComText owned(text);
    out = narrowed(std::wstring_view(text, lengthOfText.get()(text)));
    return true;
}

}  // namespace platform
