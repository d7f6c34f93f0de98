#include "device/shop_page.h"

#include "device/ews_intf.h"
#include "platform/file.h"
#include "platform/shell.h"
#include "platform/trace.h"

#include <cstddef>
#include <new>

namespace {

constexpr char kSuppliesPath[] = "/DevMgmt/ShopForSupplies.xml";
constexpr char kDefaultProgramFiles[] = "C:\\Program Files";
constexpr char kProductFolder[] = "\\QV\\QV Beamline K7400 MFP Series";
constexpr std::size_t kPathLimit = 260;  // characters of a path

// In the order in which they are copied; the page last, so that what it refers to is there.
constexpr const char* kTemplateFiles[] = {"\\P7400DEF.css", "\\P7400SIG.GIF", "\\P7400OS.HTM"};
constexpr const char* kPageFile = kTemplateFiles[2];

constexpr std::string_view kOrderField = "document.stockline.XML_string.value";

struct ShopFolders {
    std::string install;  // templates, as the printer software installed them
    std::string work;     // our copies
};

bool findFolders(ShopFolders& folders) {
    if (!platform::folderPath(platform::Folder::CommonApplicationData, folders.work)) {
        platform::trace("not get folder of application data.\n");
        return false;
    }
    folders.install = kDefaultProgramFiles;
    // False leaves the default, which is right for nearly every system.
    static_cast<void>(platform::folderPath(platform::Folder::ProgramFiles, folders.install));
    folders.install += kProductFolder;
    folders.work += kProductFolder;
    return true;
}

bool fetchSupplies(const std::wstring& portName, std::string& document) {
    if (portName.empty()) return true;
    if (EWSIntf().get_page(portName.c_str(), kSuppliesPath, document)) return true;
    platform::trace("not get shop for supply\n");
    return false;
}

bool copyTemplates(const ShopFolders& folders) {
    for (const char* const file : kTemplateFiles) {
        const std::string from = folders.install + file;
        const std::string to = folders.work + file;
        const bool fits = from.size() <= kPathLimit && to.size() <= kPathLimit;
        if (!fits || !platform::copyFile(from.c_str(), to.c_str())) {
            platform::trace("not copy template %s\n", from.c_str());
            return false;
        }
    }
    return true;
}

bool fillPage(const std::string& path, std::string_view suppliesDocument) {
    std::string page;
    if (!platform::readFile(path.c_str(), page)) {
        platform::trace("not read page %s\n", path.c_str());
        return false;
    }
    page = filledShopPage(page, suppliesDocument);
    if (!platform::writeFile(path.c_str(), page)) {
        platform::trace("not write page %s\n", path.c_str());
        return false;
    }
    return true;
}

// Line feeds, and the carriage return that stands directly before one, are the line's end; every
// other byte is the page's.
std::string withoutLineBreaks(std::string_view page) {
    std::string line;
    line.reserve(page.size());  // Equally right without it: the text then grows as it is filled.
    for (std::size_t i = 0; i < page.size(); ++i) {
        const bool endsLine = page[i] == '\r' && i + 1 < page.size() && page[i + 1] == '\n';
        if (page[i] != '\n' && !endsLine) line += page[i];
    }
    return line;
}

// The form's script takes the document as a quoted text, without its XML declaration. Nothing is
// escaped: the site expects the bytes of the device.
std::string quoted(std::string_view document) {
    const std::size_t declarationEnd = document.find('>');
    if (declarationEnd != std::string_view::npos) document.remove_prefix(declarationEnd + 1);
    std::string text;
    // Equally right without it: the text then grows as it is filled.
    text.reserve(document.size() + 2);
    text += '\'';
    text += document;
    text += '\'';
    return text;
}

}  // namespace

std::string filledShopPage(std::string_view page, std::string_view suppliesDocument) {
    std::string filled = withoutLineBreaks(page);
    if (filled.size() <= kOrderField.size()) return filled;  // no room for a page around the field
    const std::size_t field = filled.find(kOrderField);
    if (field != std::string::npos) {
        filled.replace(field, kOrderField.size(), quoted(suppliesDocument));
    }
    return filled;
}

// A try block of the whole function: nearly every step takes memory. The user can click again.
void openShopPage(const std::wstring& portName) try {
    ShopFolders folders;
    std::string document;
    if (!findFolders(folders) || !fetchSupplies(portName, document)) return;
    if (!copyTemplates(folders)) return;

    const std::string page = folders.work + kPageFile;
    if (!fillPage(page, document)) return;
    if (platform::openDocument(page.c_str())) {
        platform::trace("Success to run HTML page %s\n", page.c_str());
    } else {
        platform::trace("Failed to run HTML page %s\n", page.c_str());
    }
} catch (const std::bad_alloc&) {
    platform::trace("not get memory for shop page\n");
}
