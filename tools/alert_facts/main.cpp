#include "tools/alert_facts/pages.h"

#include <exception>
#include <iostream>
#include <string_view>

// alert_facts json|table SOURCES: prints what is known about every alert, for the page of the
// gallery or as docs/alerts.md. SOURCES is the folder of the sources.
int main(int count, char** arguments) {
    const std::string_view format = count == 3 ? arguments[1] : "";
    if (format != "json" && format != "table") {
        std::cerr << "usage: alert_facts json|table SOURCES\n";
        return 2;
    }
    try {
        const alert_facts::Facts facts = alert_facts::collectFacts(arguments[2]);
        std::cout << (format == "json" ? jsonOf(facts) : tableOf(facts));
        return 0;
    } catch (const std::exception& error) {
        std::cerr << "alert_facts: " << error.what() << "\n";
        return 1;
    }
}
