#include "server/module/ProviderErrors.h"

#include "server/module/ResponseHandlers.h"

#include <Pegasus/Provider/ProviderException.h>

#include <gtest/gtest.h>

#include <functional>
#include <stdexcept>

using namespace Pegasus;

namespace smisd {
namespace {

// The error that a call ends with which throws so.
CIMException errorOf(const std::function<void()>& call) {
    try {
        callProvider(PlainHandler(), call);
    } catch (const CIMException& error) {
        return error;
    }
    return CIMException();
}

void expectError(const std::function<void()>& call, CIMStatusCode code, const char* text) {
    const CIMException error = errorOf(call);
    EXPECT_EQ(error.getCode(), code);
    EXPECT_EQ(error.getMessage(), String(text));
}

TEST(ProviderErrors, ACimExceptionKeepsCodeAndText) {
    expectError([] { throw CIMNotSupportedException(String("X::y")); }, CIM_ERR_NOT_SUPPORTED,
                "X::y");
    expectError([] { throw CIMException(CIM_ERR_NOT_FOUND); }, CIM_ERR_NOT_FOUND, "");
    expectError([] { throw CIMException(static_cast<CIMStatusCode>(28), String("X")); },
                static_cast<CIMStatusCode>(28), "X");
}

TEST(ProviderErrors, OtherExceptionsFailWithTheirText) {
    expectError([] { throw Exception(String("plain")); }, CIM_ERR_FAILED, "plain");
    expectError([] { throw IndexOutOfBoundsException(); }, CIM_ERR_FAILED, "index out of bounds");
    expectError([] { throw std::runtime_error("standard"); }, CIM_ERR_FAILED, "standard");
}

TEST(ProviderErrors, AnythingElseIsAnUnknownError) {
    expectError([] { throw 5; }, CIM_ERR_FAILED, "Unknown error.");
}

TEST(ProviderErrors, AnExceptionWithCodeSuccessEndsTheCall) {
    EXPECT_NO_THROW(callProvider(PlainHandler(),
                                 [] { throw CIMException(CIM_ERR_SUCCESS, String("ignored")); }));
}

TEST(ProviderErrors, WhatTheReceiverThrowsIsPassedOnAsItIs) {
    struct ClientIsGone {};
    PathListHandler handler([](const CIMObjectPath&) { throw ClientIsGone(); });
    const CIMObjectPath path(String(), CIMNamespaceName(), CIMName("X"));
    EXPECT_THROW(callProvider(handler,
                              [&] {
                                  handler.deliver(path);
                                  handler.complete();
                              }),
                 ClientIsGone);
}

TEST(ProviderErrors, WhatTheReceiverThrowsIsPassedOnAlsoIfTheProviderSwallowsIt) {
    struct ClientIsGone {};
    PathListHandler handler([](const CIMObjectPath&) { throw ClientIsGone(); });
    const CIMObjectPath path(String(), CIMNamespaceName(), CIMName("X"));
    const auto swallow = [&] {
        try {
            handler.deliver(path);
            handler.complete();
        } catch (...) {
        }
    };
    EXPECT_THROW(callProvider(handler, swallow), ClientIsGone);
    EXPECT_THROW(callProvider(handler,
                              [&] {
                                  swallow();
                                  throw Exception(String("something else"));
                              }),
                 ClientIsGone);
}

} // namespace
} // namespace smisd
