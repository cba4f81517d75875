// Every key of a scheme with every value that it may come with, one at a time on top of a scheme of the
// program: whatever the result looks like, the text is accepted and its tokens stay as they are.
#include <gtest/gtest.h>

#include <limits>
#include <string>
#include <string_view>

#include "scheme/known_keys.h"
#include "scheme/scheme_check.h"
#include "support/format_text.h"

namespace TestSupport {

namespace {

namespace Keys = Tessel::Keys;

constexpr const char* kText = R"(#include <a>
namespace n { // comment
template <class T, int size = 3> class A : public B<T>, private virtual C {
public: A(int a, char*b = "x") : B<T>(a), c_(b) { } virtual ~A() throw (); /* comment
  of lines */ int f(int (*g)(int), ...) const = 0;
private: char*c_; static const unsigned d[2][2], & e; int f : 3;
};
extern "C" { enum { one, two = 2 }; }
}
#if 0
  not  read
#endif
int d[] = { 1, 2, { 3 } }, *e = &d[0];
void f(int a) { // VT-FORMAT-OFF
  a  =  b ;  // VT-FORMAT-ON
  if (a) b(c, d); else if (e) { f<g> (h); } else i = j ? k : -l + "literal	of tabs";
  for (int m = 0; m < n; ++m) { o << p << q[r]; continue; }
  do s(); while (t); while (u) ;
  switch (v) { case 1: case 2: w(); break; default: x = y && z || (a, b); }
  try { throw a; } catch (const A& b) { return; } catch (...) { goto end; }
	#define Z \
		z
end: ;
}
)";

void expectKept(const Tessel::PropertySet& scheme, const std::string& value) {
    const Formatted result = formatText(scheme, kText);
    EXPECT_EQ(brokenPromise(scheme, kText, result, false), "") << value;
}

class SchemeValues : public testing::TestWithParam<std::string_view> {
protected:
    SchemeValues() {
        scheme.setBool(Keys::LINE_WRAP, true);
        scheme.setInt(Keys::RIGHT_MARGIN, 40);
        while (scheme.erase(GetParam())) {
        }
    }

    Tessel::PropertySet scheme = shippedScheme("aligned");
};

TEST_P(SchemeValues, AnyOfThemKeepsTheTokens) {
    const std::string_view key = GetParam();
    expectKept(scheme, "absent");
    const std::string longest(TesselUI::MAXIMUM_WHITESPACE_LENGTH, ' ');
    for (const std::string& text : {std::string(), std::string(" "), std::string("\t\t"), std::string("\n"),
                                    std::string("\n\n\n"), std::string(" \n "), longest}) {
        Tessel::PropertySet changed = scheme;
        changed.setString(key, text);
        expectKept(changed, '"' + text + '"');
    }
    using Int = std::numeric_limits<int>;
    for (const int number : {Int::min(), -1, 0, 1, 2, 3, 1'000'000'000, Int::max()}) {
        Tessel::PropertySet changed = scheme;
        changed.setInt(key, number);
        expectKept(changed, std::to_string(number));
    }
    for (const bool isOn : {false, true}) {
        Tessel::PropertySet changed = scheme;
        changed.setBool(key, isOn);
        expectKept(changed, isOn ? "on" : "off");
    }
}

INSTANTIATE_TEST_SUITE_P(, SchemeValues, testing::ValuesIn(Keys::ALL),
                         [](const auto& tested) { return std::string(tested.param); });

// A key that is there twice, with another type, as a file may have it.
TEST(OddSchemes, EveryKeyWithEveryType) {
    Tessel::PropertySet scheme("odd");
    for (const std::string_view key : Keys::ALL) {
        scheme.setBool(key, true);
        scheme.setInt(key, -7);
        scheme.setString(key, "");
    }
    expectKept(scheme, "all");
    expectKept(Tessel::PropertySet("empty"), "none");
}

}  // namespace

}  // namespace TestSupport
