#include "server/monitor/Metrics.h"

#include <functional>
#include <stdexcept>

#include <Pegasus/Common/Exception.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

using namespace Pegasus;
using namespace std::chrono_literals;
using testing::HasSubstr;

namespace smisd::test {
namespace {

TEST(Metrics, CountOperationsByNameAndStatus) {
    Metrics metrics;
    metrics.operationEnded("GetInstance", "success", 5ms);
    metrics.operationEnded("GetInstance", "success", 50ms);
    metrics.operationEnded("GetInstance", "CIM_ERR_NOT_FOUND", 1ms);
    const std::string text = metrics.text({});
    EXPECT_THAT(text, HasSubstr("\nsmisd_operations_total{operation=\"GetInstance\","
                                "status=\"success\"} 2\n"));
    EXPECT_THAT(text, HasSubstr("\nsmisd_operations_total{operation=\"GetInstance\","
                                "status=\"CIM_ERR_NOT_FOUND\"} 1\n"));
}

TEST(Metrics, SumDurationsInBuckets) {
    Metrics metrics;
    metrics.operationEnded("GetInstance", "success", 500us);
    metrics.operationEnded("GetInstance", "success", 500ms);
    metrics.operationEnded("GetInstance", "success", 200s);
    const std::string text = metrics.text({});
    const std::string name = "\nsmisd_operation_duration_seconds";
    for (const char* bucket : {"le=\"0.001\"} 1\n", "le=\"0.1\"} 1\n", "le=\"1\"} 2\n",
                               "le=\"100\"} 2\n", "le=\"+Inf\"} 3\n"}) {
        EXPECT_THAT(text, HasSubstr(name + "_bucket{operation=\"GetInstance\"," + bucket));
    }
    EXPECT_THAT(text, HasSubstr(name + "_sum{operation=\"GetInstance\"} 200.5005\n"));
    EXPECT_THAT(text, HasSubstr(name + "_count{operation=\"GetInstance\"} 3\n"));
}

TEST(Metrics, ShowFailedLoginsAndGauges) {
    Metrics metrics;
    metrics.loginFailed();
    const std::string text = metrics.text({3, 8, 2, 1, 7, 4, 6, 5});
    EXPECT_THAT(text, HasSubstr("# TYPE smisd_failed_logins_total counter\n"
                                "smisd_failed_logins_total 1\n"));
    EXPECT_THAT(text, HasSubstr("\nsmisd_connections 3\n"));
    EXPECT_THAT(text, HasSubstr("\nsmisd_workers 8\n"));
    EXPECT_THAT(text, HasSubstr("\nsmisd_workers_busy 2\n"));
    EXPECT_THAT(text, HasSubstr("\nsmisd_open_enumerations 1\n"));
    EXPECT_THAT(text, HasSubstr("# TYPE smisd_dropped_lines_total counter\n"
                                "smisd_dropped_lines_total 7\n"));
    EXPECT_THAT(text, HasSubstr("# TYPE smisd_audit_failures_total counter\n"
                                "smisd_audit_failures_total 4\n"));
    EXPECT_THAT(text, HasSubstr("\nsmisd_waiting_logins 6\n"));
    EXPECT_THAT(text, HasSubstr("# TYPE smisd_refused_connections_total counter\n"
                                "smisd_refused_connections_total 5\n"));
}

struct Inner : Dispatcher {
    std::function<void()> act;
    void dispatch(const Operation&, const RequestContext&, ResultSink&) override { act(); }
};

TEST(MeasuredDispatcher, CountsHowOperationsEnd) {
    Metrics metrics;
    Inner inner;
    MeasuredDispatcher measured(inner, metrics);
    ResultSink sink;
    const auto run = [&](std::function<void()> act) {
        inner.act = std::move(act);
        measured.dispatch(DeleteInstance{}, {}, sink);
    };
    run([] {});
    EXPECT_THROW(run([] { throw CIMException(CIM_ERR_ACCESS_DENIED, ""); }), CIMException);
    EXPECT_THROW(run([] { throw CIMException(CIM_ERR_SUCCESS, ""); }), CIMException);
    EXPECT_THROW(run([] { throw CIMException(static_cast<CIMStatusCode>(31), ""); }), CIMException);
    EXPECT_THROW(run([] { throw std::runtime_error("x"); }), std::runtime_error);
    const std::string text = metrics.text({});
    for (const char* line : {"status=\"success\"} 2\n", "status=\"CIM_ERR_ACCESS_DENIED\"} 1\n",
                             "status=\"other\"} 1\n", "status=\"failure\"} 1\n"}) {
        EXPECT_THAT(
            text,
            HasSubstr(std::string("smisd_operations_total{operation=\"DeleteInstance\",") + line));
    }
}

} // namespace
} // namespace smisd::test
