#include "server/monitor/Health.h"

#include "server/schema/MofDirectory.h"

#include <Pegasus/Common/Exception.h>

#include <exception>

using namespace Pegasus;

namespace smisd {
namespace {

// One result is enough.
class FirstResult : public ResultSink {
public:
    struct Seen {};
    void instanceName(const CIMObjectPath&) override { throw Seen(); }
};

} // namespace

std::string whyNotHealthy(Dispatcher& dispatcher) {
    FirstResult sink;
    try {
        dispatcher.dispatch(EnumerateInstanceNames{CIMNamespaceName(elementNamespace),
                                                   CIMName("CIM_StorageHardwareID")},
                            RequestContext{}, sink);
    } catch (const FirstResult::Seen&) {
        return "";
    } catch (const Exception& error) {
        return std::string(error.getMessage().getCString());
    } catch (const std::exception& error) {
        return error.what();
    }
    return "";
}

} // namespace smisd
