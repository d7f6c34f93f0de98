#include <windows.h>

#include <algorithm>
#include <cstring>
#include <string>

// Stands for the maker's device library in tests: each page shows one way in which a device
// answers.
namespace {

int openDevices = 0;

struct Page {
    const char* path;
    std::string bytes;
    DWORD claimed;  // 0: the truth
};

const Page* findPage(const char* path) {
    static const Page pages[] = {
        {"/DevMgmt/ConsumableConfigDyn.xml",
         "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<ccdyn:ConsumableConfigDyn "
         "xmlns:ccdyn=\"urn:c\" "
         "xmlns:dd=\"urn:d\">\n <ccdyn:ConsumableInfo>\n  "
         "<dd:ProductNumber>QV-7400A</dd:ProductNumber>\n"
         "  <dd:SerialNumber> 4711 </dd:SerialNumber>\n </ccdyn:ConsumableInfo>\n"
         "</ccdyn:ConsumableConfigDyn>\n",
         0},
        {"/DevMgmt/ProductUsageDyn.xml",
         "<pudyn:P xmlns:pudyn=\"urn:p\" "
         "xmlns:dd=\"urn:d\"><pudyn:ConsumableSubunit><pudyn:Consumable>"
         "<dd:EstimatedPagesRemaining>1200</dd:EstimatedPagesRemaining></pudyn:Consumable>"
         "</pudyn:ConsumableSubunit></pudyn:P>",
         0},
        {"/dev/qvLoyalty.xml",
         "<loyalty><cartridge><cartModelInformation>QV-7400A</cartModelInformation>"
         "<cartLife>55</cartLife><cartSerialNumber>4711</cartSerialNumber></cartridge>"
         "<printerModel> Beamline\tK7400 MFP </printerModel></loyalty>",
         0},
        {"/full", std::string(65536, 'x'), 0},
        {"/too-large", std::string(65537, 'x'), 0},
        {"/lie", "abc", 0xFFFFFFFF},
        {"/empty", "", 0},
    };
    const auto found = std::find_if(std::begin(pages), std::end(pages), [path](const Page& page) {
        return std::strcmp(page.path, path) == 0;
    });
    return found != std::end(pages) ? found : nullptr;
}

}  // namespace

#define EXPORTED extern "C" __declspec(dllexport)

EXPORTED HANDLE OpenEWSPort_W(const wchar_t* port) {
    if (std::wcscmp(port, L"offline") == 0) return nullptr;
    ++openDevices;
    return &openDevices;
}
EXPORTED BOOL CloseEWS(HANDLE) {
    --openDevices;
    return TRUE;
}
EXPORTED BOOL GetPage(HANDLE, const char* path, void*, char* buffer, DWORD size, DWORD* received) {
    const Page* const page = findPage(path);
    if (page == nullptr) return FALSE;
    const std::size_t copied = std::min<std::size_t>(page->bytes.size(), size);
    std::copy_n(page->bytes.begin(), copied, buffer);
    *received = page->claimed != 0 ? page->claimed : static_cast<DWORD>(page->bytes.size());
    return TRUE;
}
EXPORTED BOOL PushLedmButtonW(HANDLE, const wchar_t* button) {
    return std::wcscmp(button, L"cancel") == 0 || std::wcscmp(button, L"go") == 0;
}
EXPORTED int StandInOpenDevices() {
    return openDevices;
}

// There, and never called.
EXPORTED void OpenEWSPort_A() {}
EXPORTED void OpenEWS_W() {}
EXPORTED void OpenEWS_A() {}
EXPORTED void EWSLastError() {}
EXPORTED void WriteEWS() {}
EXPORTED void ReadEWS() {}
EXPORTED void WriteReadEWS() {}
