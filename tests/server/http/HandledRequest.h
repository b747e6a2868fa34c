// A request handler between a dispatcher and a client that tests look into.
#pragma once

#include <functional>
#include <optional>
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
    void judge(const LoginAttempt& attempt, Done done) override {
        address = attempt.address;
        if (attempt.credentials == "Basic good") {
            done({User{"alice", Role::reader}});
        } else if (attempt.credentials == "Basic later") {
            done({{}, std::chrono::seconds(3)});
        } else {
            done({});
        }
    }
    std::string address;
};

struct Channel : ResponseChannel {
    std::string bytes;
    int sends = 0;
    bool lost = false;

    void send(std::string more) override {
        if (lost) {
            throw ConnectionLost();
        }
        bytes += more;
        ++sends;
    }
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
    std::optional<RequestHandler> handler;

    // What becomes of the request by its head.
    Admission admitted(const HttpRequest& request) {
        Admission admission;
        handler.emplace(dispatcher, checkedBy, "array1", limits);
        handler->admit(request, [&](Admission decided) { admission = std::move(decided); });
        return admission;
    }
    // As the server does; returns whether the connection stays open.
    bool handle(const HttpRequest& request) {
        const Admission admission = admitted(request);
        if (admission.job) {
            return admission.job(request.body, channel);
        }
        channel.send(admission.refusal(admission.keepOpen));
        return admission.keepOpen;
    }

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
