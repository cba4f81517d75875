// Each key's example, as the guide to the keys shows it.

#include <gtest/gtest.h>

#include <set>

#include "engine/layout_observer.h"
#include "scheme/key_guide.h"
#include "scheme/known_keys.h"
#include "support/format_text.h"

namespace {

using Tessel::KeyGroup;
using Tessel::KeyGuide;

std::string formatted(const KeyGuide& guide, bool withKey) {
    Tessel::PropertySet scheme("example");
    for (const Tessel::Property& property : guide.base) scheme.set(property);
    if (withKey) scheme.set(guide.shown);
    const TestSupport::Formatted result = TestSupport::formatText(scheme, guide.source);
    return result.accepted() ? result.text : result.refusal;
}

TEST(KeyGuide, EveryKeyHasARowWhoseExampleShowsWhatItDoes) {
    EXPECT_EQ(Tessel::keyGuides().size(), Tessel::Keys::ALL.size());
    for (const std::string_view key : Tessel::Keys::ALL) {
        const KeyGuide* guide = Tessel::findKeyGuide(key);
        ASSERT_TRUE(guide) << key << " has no row in the guide to the keys";
        EXPECT_EQ(guide->shown.type(), Tessel::Keys::typeOf(key)) << key;
        const bool isVersion = key == Tessel::Keys::VANTREL_VERSION || key == Tessel::Keys::REQUIRED_VERSION.name;
        if (guide->group == KeyGroup::WithoutEffect || isVersion) continue;
        EXPECT_NE(formatted(*guide, true), formatted(*guide, false)) << key << " shows no difference";
        if (key == Tessel::Keys::KEEP_UNRECOGNIZED.name) continue;
        EXPECT_EQ(formatted(*guide, false).find("Unexpected"), std::string::npos) << key;
    }
}

class KeysTold : public Tessel::LayoutObserver {
public:
    void begin(const Zelmor::TextDocument&) override {}
    void decided(const Tessel::DecidedGap& gap) override {
        keys_.insert(gap.key.name());
        keys_.insert(gap.indentKey.name());
        EXPECT_EQ(gap.written.find_first_not_of(" \t\n"), gap.written.npos) << gap.key.name();
    }
    void measured(const Tessel::Measured& measure) override { keys_.insert(measure.key.name()); }
    bool hold(std::string_view key) const { return keys_.contains(key); }

private:
    std::set<std::string_view> keys_;
};

// What says how other keys count, or what is not laid out at all, decides no gap by itself; and no example has lines
// that are too long in its source.
bool isNeverTold(std::string_view key) {
    for (const std::string_view part :
         {"_VERSION", "TAB_SIZE", "CONVERT_WS", "TABS_IN_", "LINE_WRAP", "WRAP_ST", "WRAP_INDENT", "WRAP_LAST_RESORT",
          "WRAP_WHOLE", "WRAP_BY_WEIGHT", "LITERALS_BEYOND", "INDENT_FROM_LINE", "FN_DO_NOT_FORMAT",
          "FORMAT_TYPE_ARGUMENTS", "FORMAT_DIRECTIVES", "FORMAT_CONDITIONS", "FORMAT_MACRO_", "FROM_DIRECTIVE",
          "LINE_SPLICES", "LINE_COMMENTS", "HANGING_",
          "KEEP_UNRECOGNIZED", "WS_AROUND_PASTE", "ANCHORS_FROM", "KEEP_REGION_INDENT", "KEEP_FOREIGN_REGIONS",
          "KEEP_LINE_INDENT", "DATA_ONLY"}) {
        if (key.find(part) != std::string_view::npos) return true;
    }
    return false;
}

// Another key is told of the same gaps where these are absent.
bool isToldAsAnother(std::string_view key) {
    const bool breaksLists = key.starts_with("ALIGN_") && key.ends_with("S_LEFT") && !key.ends_with("NAMES_LEFT");
    return breaksLists || key == Tessel::Keys::DATA_DO_NOT_FORMAT || key == Tessel::Keys::RIGHT_MARGIN ||
           key.starts_with("JOIN_") || key == "WS_IN_EMPTY_BRACES" || key == "ALIGN_ASSIGNMENTS" ||
           key == "ALIGN_LIST_COLUMNS" || key == "INDENT_INNER_NS_ONLY" || key.find("_CS_MACRO") != key.npos;
}

TEST(KeyGuide, EveryKeyIsToldToAnObserverWhetherTheSchemeHasItOrNot) {
    KeysTold absent;
    for (const KeyGuide& guide : Tessel::keyGuides()) {
        Tessel::PropertySet scheme("example");
        TestSupport::formatText(scheme, guide.source, &absent);
        for (const Tessel::Property& property : guide.base) scheme.set(property);
        scheme.set(guide.shown);
        KeysTold told;
        const std::string text = TestSupport::formatText(scheme, guide.source, &told).text;
        EXPECT_EQ(text, TestSupport::formatText(scheme, guide.source).text) << guide.key();
        if (guide.group == KeyGroup::WithoutEffect || isNeverTold(guide.key())) continue;
        EXPECT_TRUE(told.hold(guide.key())) << guide.key() << " of a scheme";
    }
    for (const KeyGuide& guide : Tessel::keyGuides()) {
        if (guide.group == KeyGroup::WithoutEffect || isNeverTold(guide.key())) continue;
        if (isToldAsAnother(guide.key())) continue;
        EXPECT_TRUE(absent.hold(guide.key())) << guide.key() << " of none";
    }
}

TEST(KeyGuide, FindsTheKeyThatWasMeant) {
    EXPECT_EQ(Tessel::nearestKey("WS_AFTER_FN_NAM"), Tessel::Keys::WS_AFTER_FN_NAME);
    EXPECT_EQ(Tessel::nearestKey("tab_size"), "");
    EXPECT_EQ(Tessel::nearestKey(std::string(100000, 'A')), "");
}

}  // namespace
