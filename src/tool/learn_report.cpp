#include "tool/learn_report.h"

#include <algorithm>
#include <cstdio>

#include "scheme/property_line.h"

namespace Tool {

namespace {

using Learn::Decision;
using Learn::Origin;

std::string placeText(const LearnReport& report, const Learn::Place& place) {
    return (*report.fileNames)[place.file] + ':' + std::to_string(place.line);
}

// "\n" 71 % (src/a.c:12), "" 29 % (src/b.c:3)
std::string sidesText(const LearnReport& report, const Decision& decision) {
    constexpr std::size_t sides = 2;
    std::string text;
    for (std::size_t i = 0; i < std::min(decision.sightings.size(), sides); ++i) {
        const Learn::Sighting& sighting = decision.sightings[i];
        if (i > 0) text += ", ";
        text += Tessel::valueText(sighting.value) + ' ' +
                percentText(sighting.found.count, decision.sightingCount()) + " (" +
                placeText(report, sighting.found.first) + ')';
    }
    return text;
}

}  // namespace

std::string withThousands(std::size_t number) {
    std::string text = std::to_string(number);
    for (std::size_t place = text.size(); place > 3;) {
        place -= 3;
        text.insert(place, 1, ',');
    }
    return text;
}

std::string percentText(std::size_t part, std::size_t whole) {
    return std::to_string(whole == 0 ? 0 : part * 100 / whole) + " %";
}

std::string reasonText(const Decision& decision) {
    switch (decision.origin) {
        case Origin::Found:
            return percentText(decision.agreeing, decision.places) + " of " + withThousands(decision.places);
        case Origin::Kin: return "as " + std::string(decision.kin.name());
        case Origin::Given: return "as in the scheme that was given";
        case Origin::Tried: return "no other value that was tried changes clearly fewer lines";
        case Origin::Nearest: return "as in the nearest of the known schemes";
        case Origin::Lines: return "as all lines are, whatever stands in them";
        case Origin::Preset: return "suits any source";
        case Origin::Disputed:
        case Origin::Unseen: break;
    }
    return {};
}

std::string changedPerHundred(const LearnReport& report) {
    const auto lines = static_cast<double>(std::max<std::size_t>(report.learned.triedLines, 1));
    char rate[32];
    std::snprintf(rate, sizeof rate, "%.2f", 100.0 * static_cast<double>(report.learned.changedLines) / lines);
    return rate;
}

std::string learnedSchemeText(const LearnReport& report) {
    const Tessel::PropertySet& scheme = report.learned.scheme;
    std::string text = "Tessel::PropertySet\n1\n\"" + scheme.getName() + "\"\n# Learned from " +
                       withThousands(report.files) + " files, " + withThousands(report.lines) + " lines\n";
    for (const Tessel::Property& property : scheme.properties()) {
        if (property.key != Tessel::Keys::VANTREL_VERSION) {
            const Decision& decision = report.learned.decisions[Tessel::KeyId::find(property.key).place()];
            text += "# " + property.key + ' ' + Tessel::valueText(property.value) + ' ' + reasonText(decision) + '\n';
        }
        text += Tessel::propertyLine(property) + '\n';
    }
    for (const Decision& decision : report.learned.decisions) {
        if (decision.origin != Origin::Disputed) continue;
        text += "# " + std::string(decision.key.name()) + " is open: " + sidesText(report, decision) + ", of " +
                withThousands(decision.places) + '\n';
    }
    return text;
}

std::string learnSummary(const LearnReport& report) {
    std::size_t places = 0;
    std::size_t agreeing = 0;
    std::string open;
    for (const Decision& decision : report.learned.decisions) {
        if (decision.origin == Origin::Found || decision.origin == Origin::Disputed) {
            places += decision.places;
            agreeing += decision.agreeing;
        }
        if (decision.origin != Origin::Disputed) continue;
        open += "  " + std::string(decision.key.name()) + ": " + sidesText(report, decision) + '\n';
    }
    std::string text = withThousands(report.files) + " files, " + withThousands(report.lines) + " lines, " +
                       withThousands(places) + " places, of which " + percentText(agreeing, places) + " agree";
    if (report.refused > 0) text += "; files that could not be used: " + withThousands(report.refused);
    text += "\nThe scheme would still change " + changedPerHundred(report) + " lines of 100.\n";
    return open.empty() ? text : text + "Left open, for the places do not agree:\n" + open;
}

}  // namespace Tool
