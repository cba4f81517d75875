#include "scheme/scheme_directory.h"

#include <sys/auxv.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <optional>
#include <sstream>
#include <string_view>
#include <system_error>
#include <utility>

#include "files/write_file.h"

namespace TesselUI {

namespace {

namespace fs = std::filesystem;

constexpr std::string_view DIRECTORY_KEY = "PropertySetStore";

std::string environment(const char* name) {
    const char* value = std::getenv(name);
    return value ? value : "";
}

std::string_view trimmed(std::string_view text) {
    constexpr std::string_view blanks = " \t\r";
    const std::size_t first = text.find_first_not_of(blanks);
    if (first == std::string_view::npos) return {};
    return text.substr(first, text.find_last_not_of(blanks) - first + 1);
}

// Empty where the user has no place for settings.
fs::path settingsPath() {
    fs::path configuration = environment("XDG_CONFIG_HOME");
    if (!configuration.is_absolute()) {
        const fs::path home = environment("HOME");
        if (home.empty()) return {};
        configuration = home / ".config";
    }
    return configuration / "vantrel" / "settings";
}

// The second way is for machines without /proc: the name that the program was started by, links followed.
fs::path executablePath() {
    std::error_code error;
    const fs::path path = fs::read_symlink("/proc/self/exe", error);
    if (!error) return path;
    const char* startedAs = reinterpret_cast<const char*>(::getauxval(AT_EXECFN));
    return startedAs ? fs::canonical(startedAs, error) : fs::path();
}

// The settings file: its text, and where in it the scheme directory stands.
class Settings {
public:
    // Nothing when there is no such file.
    static std::optional<Settings> open(const fs::path& path) {
        std::error_code error;
        if (!fs::is_regular_file(path, error)) return std::nullopt;
        std::ifstream in(path, std::ios::binary);
        std::ostringstream text;
        text << in.rdbuf();
        if (!in) return std::nullopt;
        return Settings(path, text.str());
    }

    const std::string& directory() const { return directory_; }

    // A file that cannot be written stays as it is.
    void storeDirectory(const std::string& directory) const {
        std::string text = text_;
        const std::string line = std::string(DIRECTORY_KEY) + " = " + directory + '\n';
        if (lineStart_ != std::string::npos) {
            text.replace(lineStart_, lineLength_, line);
        } else {
            if (!text.empty() && text.back() != '\n') text += '\n';
            text += line;
        }
        if (Files::isReadOnly(path_)) return;
        try {
            Files::writeFile(path_, text);
        } catch (const Files::WriteFailure&) {  // the value is only kept for later runs
        }
    }

private:
    Settings(const fs::path& path, std::string text) : path_(path.string()), text_(std::move(text)) {
        std::size_t end = 0;
        for (std::size_t start = 0; start < text_.size(); start = end) {
            end = std::min(text_.find('\n', start), text_.size() - 1) + 1;
            readLine(start, end - start);
        }
    }

    // A later line overrides an earlier one.
    void readLine(std::size_t start, std::size_t length) {
        std::string_view line = std::string_view(text_).substr(start, length);
        if (line.ends_with('\n')) line.remove_suffix(1);
        const std::size_t separator = line.find('=');
        if (separator == std::string_view::npos || trimmed(line.substr(0, separator)) != DIRECTORY_KEY)
            return;
        directory_ = trimmed(line.substr(separator + 1));
        lineStart_ = start;
        lineLength_ = length;
    }

    std::string path_;
    std::string text_;
    std::string directory_;
    std::size_t lineStart_ = std::string::npos;
    std::size_t lineLength_ = 0;
};

}  // namespace

std::string schemeDirectory() {
    if (std::string directory = chosenSchemeDirectory(); !directory.empty()) return directory;
    std::string directory = shippedSchemeDirectory();
    const std::optional<Settings> settings = Settings::open(settingsPath());
    if (settings && !directory.empty()) settings->storeDirectory(directory);
    return directory;
}

std::string chosenSchemeDirectory() {
    if (std::string directory = environment("VANTREL_SCHEMES"); !directory.empty()) return directory;
    const std::optional<Settings> settings = Settings::open(settingsPath());
    return settings ? settings->directory() : "";
}

std::string shippedSchemeDirectory() {
    std::string directory = executablePath().parent_path().string();
    if (!directory.empty() && !directory.ends_with('/')) directory += '/';
    return directory;
}

}  // namespace TesselUI
