#pragma once

#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "scheme/extension_keys.h"
#include "scheme/key_guide.h"
#include "scheme/property_keys.h"

// What the rows of the guide to the keys are written with.
namespace Tessel::KeyExamples {

struct KeyName {
    KeyName(std::string_view key) : name(key) {}
    template <PropertyType type>
    KeyName(ExtensionKey<type> key) : name(key.name) {}
    std::string_view name;
};

inline Property set(KeyName key, decltype(Property::value) value) {
    return {std::string(key.name), std::move(value)};
}

// ---- sources that several keys show themselves on

inline constexpr const char* space = "namespace app{int size;}\n";
inline constexpr const char* classOfOne = "class A{int size;};\n";
inline constexpr const char* functionOfOne = "int f(){return 1;}\n";
inline constexpr const char* condition = "void f()\n{\n    if(ready){go();}\n}\n";
inline constexpr const char* enumeration = "enum Color{red,green};\n";
inline constexpr const char* enumerationOverLines = "enum Color\n{\nred,\ngreen\n};\n";
inline constexpr const char* block = "void f()\n{\n    {go();}\n}\n";
inline constexpr const char* linkage = "extern \"C\"{\nint f();\n}\n";
inline constexpr const char* table = "int sizes[]={1,2};\n";
inline constexpr const char* derived = "class A:public B,public C\n{\n};\n";
inline constexpr const char* constructor = "A::A(int size):size_(size),top_(0)\n{\n}\n";
inline constexpr const char* declaration = "int f(int a,int b);\n";
inline constexpr const char* call = "int x = f(a,b);\n";
inline constexpr const char* header = "template<class T,int n>\nclass A;\n";
inline constexpr const char* loop = "void f()\n{\n    for(int i = 0;i < n;++i) go(i);\n}\n";
inline constexpr const char* choice =
    "void f()\n{\n    switch (key)\n    {\n    case 1:go();\n    default:stop();\n    }\n}\n";
inline constexpr const char* sum = "int x = a+b;\n";
inline constexpr const char* longCall = "int x = call(first_argument, second_argument, third_argument);\n";
inline constexpr const char* longSum = "int x = first_operand + second_operand + third_operand;\n";
inline constexpr const char* longChain =
    "void f()\n{\n    out << first_operand << second_operand << third_operand;\n}\n";
inline constexpr const char* longParameters = "void f(int first_parameter, int second_parameter, int third_one);\n";
inline constexpr const char* pointers = "int * p;\nint & r = *p;\n";

// A scheme that breaks long lines.
inline std::vector<Property> wrapping(std::vector<Property> more = {}) {
    more.push_back(set(Keys::LINE_WRAP, true));
    more.push_back(set(Keys::RIGHT_MARGIN, 40));
    return more;
}

}  // namespace Tessel::KeyExamples
