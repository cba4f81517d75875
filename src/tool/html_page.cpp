#include "tool/html_page.h"

#include "tool/escape.h"

namespace Tool {

std::string htmlPage(std::string_view title, std::string_view style, std::string_view body) {
    const std::string shown = markup(title);
    std::string text = "<!DOCTYPE html>\n<html lang=\"en\">\n<head>\n<meta charset=\"utf-8\">\n<title>" + shown +
                       "</title>\n<style>\n";
    text += style;
    text += "</style>\n</head>\n<body>\n<h1>" + shown + "</h1>\n";
    text += body;
    return text + "</body>\n</html>\n";
}

}  // namespace Tool
