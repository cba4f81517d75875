#pragma once

#include <string>

// What is made of the table of options.
namespace Tool {

// The completion of a shell: bash, zsh or fish.
std::string completionScript(const std::string& shell);

// The manual page, in the form that scdoc reads.
std::string manualSource();

}  // namespace Tool
