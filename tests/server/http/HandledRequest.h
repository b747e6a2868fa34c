// A request handler between a dispatcher and a client that tests look into.
#pragma once

#include <functional>
#include <string>

#include <gtest/gtest.h>

#include "server/http/RequestHandler.h"
#include "tests/server/http/HttpRequests.h"

namespace smisd::test {

struct FakeDispatcher : Dispatcher {
    std::function<void(ResultSink&)> answer = [](ResultSink&) {};
    int calls = 0;
    RequestContext context;
    Operation operation;

    void dispatch(const Operation& received, const RequestContext& receivedContext,
                  ResultSink& sink) override {
        ++calls;
        operation = received;
        context = receivedContext;
        answer(sink);
    }
};

struct FakeAuthenticator : Authenticator {
    std::optional<User> userOf(const LoginAttempt& attempt) override {
        address = attempt.address;
        if (attempt.credentials == "Basic slow") {
            attempt.wait(std::chrono::seconds(3));
        }
        return attempt.credentials == "Basic good" ? std::optional<User>({"alice", Role::reader})
                                                   : std::nullopt;
    }
    std::string address;
};

struct Channel : ResponseChannel {
    std::string bytes;
    int sends = 0;
    std::chrono::milliseconds waited{0};
    bool lost = false;

    void send(std::string more) override {
        if (lost) {
            throw ConnectionLost();
        }
        bytes += more;
        ++sends;
    }
    void wait(std::chrono::milliseconds time) override { waited += time; }
};

inline Pegasus::CIMObjectPath path() {
    return Pegasus::CIMObjectPath("", Pegasus::CIMNamespaceName(), Pegasus::CIMName("C"));
}

class HandledRequest : public testing::Test {
protected:
    FakeDispatcher dispatcher;
    FakeAuthenticator authenticator;
    Channel channel;
    Authenticator* checkedBy = nullptr;

    bool handle(const HttpRequest& request) { return handler().handle(request, channel); }
    RequestHandler handler() { return RequestHandler(dispatcher, checkedBy, "array1", limits); }

    static constexpr size_t answerBytes = 100'000;

    HttpLimits limits = [] {
        HttpLimits changed;
        changed.queueBytes = answerBytes;
        return changed;
    }();

    static void deliver(ResultSink& sink, int count) {
        for (int i = 0; i < count; ++i) {
            sink.instanceName(path());
        }
    }
};

} // namespace smisd::test
