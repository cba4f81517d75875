#include <gtest/gtest.h>

#include <fstream>
#include <set>
#include <sstream>
#include <string>
#include <vector>

#include "scheme/known_keys.h"
#include "scheme/property_set.h"
#include "scheme/property_set_store.h"
#include "scheme/scheme_check.h"
#include "scheme/scheme_lint.h"

namespace {

using Tessel::PropertySet;
namespace Keys = Tessel::Keys;

const std::string DIRECTORY = VANTREL_SHIPPED_SCHEMES "/";

std::string contentOf(const std::string& fileName) {
    std::ifstream in(DIRECTORY + fileName, std::ios::binary);
    std::ostringstream content;
    content << in.rdbuf();
    return content.str();
}

std::string withoutComments(const std::string& text) {
    std::istringstream in(text);
    std::string result;
    for (std::string line; std::getline(in, line);) {
        if (!line.starts_with('#')) result += line + '\n';
    }
    return result;
}

PropertySet schemeOf(const std::string& fileName) {
    std::istringstream in(contentOf(fileName));
    return PropertySet(in);
}

class ShippedSchemes : public testing::Test {
protected:
    void SetUp() override { ASSERT_FALSE(fileNames_.empty()) << "no schemes in " << DIRECTORY; }

    const std::set<std::string> fileNames_ = TesselUI::PropertySetStore::findPSFiles(DIRECTORY);
};

TEST_F(ShippedSchemes, AreUsableCurrentAndWrittenAsTheyWouldBeSaved) {
    for (const std::string& fileName : fileNames_) {
        const PropertySet scheme = schemeOf(fileName);
        EXPECT_EQ(scheme.getName() + ".vts", fileName);
        std::string version;
        scheme.getString(Keys::VANTREL_VERSION, version);
        EXPECT_EQ(version, "1.2.1") << fileName;
        EXPECT_FALSE(TesselUI::findUnusableText(scheme)) << fileName;
        std::ostringstream saved;
        scheme.write(saved);
        EXPECT_EQ(saved.str(), withoutComments(contentOf(fileName))) << fileName;
    }
}

TEST_F(ShippedSchemes, HaveNoLineThatTheCheckComplainsOf) {
    for (const std::string& fileName : fileNames_) {
        for (const TesselUI::SchemeFault& fault : TesselUI::lintScheme(contentOf(fileName))) {
            ADD_FAILURE() << fileName << ':' << fault.line << ": " << fault.text;
        }
    }
}

// A key that only some schemes have was forgotten in the others: what is laid out in one is laid out in all.
// How blocks open is the exception: where braces end lines, a block that stands alone stays where it is.
// Extension keys are there where they serve the style.
TEST_F(ShippedSchemes, HaveTheSameKeys) {
    const auto comparedKeys = [](const std::string& fileName) {
        std::vector<std::string> names = schemeOf(fileName).names();
        std::erase_if(names, [](const std::string& key) {
            return key == Keys::GLOBAL_WS_BEFORE_OPEN_BRACE || Keys::findExtension(key);
        });
        return names;
    };
    for (const std::string& fileName : fileNames_) {
        EXPECT_EQ(comparedKeys(fileName), comparedKeys("allman.vts")) << fileName;
    }
}

}  // namespace
