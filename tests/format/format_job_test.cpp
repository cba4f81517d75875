// How a job ends that is cancelled, or whose source cannot be read: one message, status 1, nothing written.
#include "engine/format_job.h"

#include <gtest/gtest.h>

#include <sstream>
#include <stdexcept>
#include <string>
#include <vector>

#include "layout/passes.h"

namespace {

// Answers the questions whether to go on: with no from the one on that has this number.
class GoesOnUntil : public Tessel::UpdateFunctor {
public:
    explicit GoesOnUntil(std::size_t end) : end_(end) {}
    bool operator()(const std::string& message) override {
        messages.push_back(message);
        return messages.size() < end_;
    }

    std::vector<std::string> messages;

private:
    std::size_t end_;
};

class FailingBuffer : public std::streambuf {
    int_type underflow() override { throw std::runtime_error("cannot be read"); }
    std::streamsize xsgetn(char*, std::streamsize) override { return underflow(); }
};

std::string endOf(std::istream& in, GoesOnUntil& progress) {
    const Tessel::Passes passes;
    const Tessel::FormatOptions options{Tessel::PropertySet("s"), Tessel::protectedRegionMarkers()};
    std::ostringstream out;
    std::list<Tessel::Diagnostic> diagnostics;
    Tessel::TaskRunner tasks;
    const int status = Tessel::FormatJob(passes, tasks).format(options, in, out, diagnostics, progress);
    EXPECT_EQ(static_cast<std::size_t>(status), diagnostics.size());
    return status == 0 ? out.str() : out.str() + diagnostics.back().text;
}

TEST(FormatJob, EndsWhenItIsCancelledOrItsSourceCannotBeRead) {
    std::vector<std::string> messages;
    for (const char* message : {"Analyzing file:\n%s", "Formatting file:\n%s"}) {
        messages.emplace_back(message);
        std::istringstream in("int a;\n");
        GoesOnUntil progress(messages.size());
        EXPECT_EQ(endOf(in, progress), "Formatting cancelled at user's request.");
        EXPECT_EQ(progress.messages, messages);
    }
    FailingBuffer buffer;
    std::istream broken(&buffer);
    GoesOnUntil progress(messages.size() + 1);
    EXPECT_EQ(endOf(broken, progress), "Unable to rewind input.");
}

}  // namespace
