#include "tools/alert_facts/topics.h"

#include "printer/status_codes.h"

#include <stdexcept>

namespace alert_facts {

namespace code = status_code;

const std::vector<Topic>& topics() {
    static const std::vector<Topic> list = {{"paper", "Paper"},
                                            {"jams", "Jams and doors"},
                                            {"toner", "Toner and cartridge"},
                                            {"duplex", "Two-sided printing"},
                                            {"fax", "Fax"},
                                            {"problems", "Printer problems"},
                                            {kCheckTopic, "Cartridge check"}};
    return list;
}

// No default for the types: a new one does not compile until it has a topic.
std::string topicOf(AlertType type, std::int32_t status) {
    switch (type) {
        case AlertType::PaperOut:
        case AlertType::LoadMedia:
        case AlertType::ManualFeed:
            return "paper";
        case AlertType::DoorOpen:
        case AlertType::CartridgeDoorOpen:
        case AlertType::RearJam:
        case AlertType::JamInside:
        case AlertType::TrayJam:
            return "jams";
        case AlertType::TonerLow:
        case AlertType::TonerVeryLow:
        case AlertType::TonerOut:
        case AlertType::NoCartridge:
        case AlertType::IllegalCartridge:
        case AlertType::NonQvCartridge:
        case AlertType::CartridgeMemoryError:
        case AlertType::CartridgeNotRecognized:
        case AlertType::CartridgeNotAccepted:
        case AlertType::UsedCartridge:
        case AlertType::Welcome:
            return "toner";
        case AlertType::ManualDuplex:
            return "duplex";
        case AlertType::FaxPrinted:
        case AlertType::FaxInCompanion:
            return "fax";
        case AlertType::InternalError:
        case AlertType::LaserBeam:
        case AlertType::PageNotFinished:
        case AlertType::PaperFeed:
        case AlertType::Fuser:
        case AlertType::Communication:
        case AlertType::FuserNotWarm:
        case AlertType::PrintEngine:
        case AlertType::LaserScanner:
            return "problems";
        case AlertType::GenericStatus:
            switch (status) {
                case code::kReseatCartridge:
                case code::kInstallQvCartridge:
                    return "toner";
                case code::kDuplexJam42003:
                case code::kDuplexJam42004:
                case code::kJamInside42100:
                case code::kJamInside42300:
                    return "jams";
                case code::kFan:
                    return "problems";
                default:
                    break;
            }
            break;
        case AlertType::None:
            break;
    }
    throw std::runtime_error("status " + std::to_string(status) +
                             " has no topic; give it one in tools/alert_facts/topics.cpp");
}

}  // namespace alert_facts
