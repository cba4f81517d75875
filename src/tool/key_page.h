#pragma once

#include <string>

#include "scheme/key_guide.h"

namespace Tool {

// All keys by group: name, type and meaning.
std::string keyList();

// All that is known of one key, with what the formatter makes of its example.
std::string keyText(const Tessel::KeyGuide& guide);

// The same of all keys, as a page of Markdown, or of HTML that needs no other file.
std::string keyPageMarkdown();
std::string keyPageHtml();

}  // namespace Tool
