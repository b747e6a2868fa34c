// Where in its source an event says that it was published.

#include <fstream>
#include <vector>

#include "providers/masking/ControllerConfigurationService.h"
#include "tests/support/ProviderTest.h"

using namespace Pegasus;
using namespace scripted;

namespace {

// The number of the one line of a source that holds a text.
int sourceLine(const std::string& file, const std::string& part) {
    std::ifstream source(SOURCE_ROOT "/" + file);
    std::vector<int> found;
    std::string line;
    for (int number = 1; std::getline(source, line); ++number) {
        if (line.find(part) != std::string::npos) {
            found.push_back(number);
        }
    }
    EXPECT_EQ(found.size(), 1u) << part;
    return found.empty() ? 0 : found[0];
}

class EventLinesTest : public ProviderTest<ControllerConfigurationServiceProvider> {};

TEST_F(EventLinesTest, TheInvocationOfTheControllerServiceIsPublishedFromItsLine) {
    MethodResultHandler results;
    provider.invokeMethod(context, requestPath("CIM_Service"), "HidePaths", {}, results);

    ASSERT_EQ(events().size(), 1u);
    EXPECT_EQ(events()[0].line, sourceLine("providers/masking/ControllerConfigurationService.cpp",
                                           "publishInvoked("));
}

} // namespace
