#include "platform/xml_query.h"

#include "platform/simulated/world.h"
#include "platform/simulated/xml_reader.h"
#include "platform/text.h"

namespace platform {

bool queryXml(std::string_view document, const char* path, std::string& out) {
    out.clear();
    if (simulated::world().faults.strikes(simulated::Call::XmlQuery)) return false;
    const auto text = simulated::XmlReader(document, path).read();
    if (!text) return false;
    out = narrowed(*text);
    return true;
}

}  // namespace platform
