#include "server/http/RequestHandler.h"

#include <new>
#include <utility>

#include <spdlog/spdlog.h>

#include "server/cimxml/RequestDecoder.h"
#include "server/http/Answer.h"
#include "server/http/HttpResponse.h"
#include "server/http/RefusedRequest.h"
#include "server/operation/Utf8.h"

namespace smisd {
namespace {

constexpr unsigned outOfMemory = 503;
constexpr std::chrono::seconds tryAgainAfter{2};

// A client that does not speak CIM-XML has nothing more to say.
bool staysOpen(const BadRequest& badRequest, bool keepAlive) {
    return keepAlive && (!badRequest.cimError().empty() || badRequest.status() == 400 ||
                         badRequest.status() == outOfMemory);
}

// The detail may quote what the client sent, and that may be a secret.
void tell(const std::string& peer, const BadRequest& badRequest) {
    spdlog::debug("{}: refused: {} {}", peer, badRequest.status(), badRequest.cimError());
}

} // namespace

RequestHandler::RequestHandler(Dispatcher& dispatcher, Authenticator* authenticator,
                               std::string hostName, const HttpLimits& limits)
    : _dispatcher(dispatcher), _authenticator(authenticator), _hostName(std::move(hostName)),
      _limits(limits) {}

void RequestHandler::admit(HttpRequest head, Decide decide) const {
    try {
        checkHttpMethod(head);
    } catch (const BadRequest& badRequest) {
        decide(refused(head, badRequest));
        return;
    }
    if (_authenticator == nullptr) {
        decide(accepted(head, {"", Role::administrator}));
        return;
    }
    const WipedString credentials(head.header("Authorization").value_or(""));
    const std::string address = head.peer;
    _authenticator->judge(
        {credentials, address},
        [this, head = std::move(head), decide = std::move(decide)](const Judgement& judgement) {
            Admission admission; // without memory for another the client is cut off
            try {
                admission = judged(head, judgement);
            } catch (const std::bad_alloc&) {
            }
            decide(std::move(admission));
        });
}

Admission RequestHandler::judged(const HttpRequest& head, const Judgement& judgement) const {
    if (judgement.user) {
        return accepted(head, *judgement.user);
    }
    if (const auto time = judgement.tryAgainAfter) {
        return {{},
                [time = *time](bool keepOpen) {
                    return unavailable("The password was not looked at", time, keepOpen);
                },
                head.keepAlive};
    }
    return {
        {}, [this](bool keepOpen) { return unauthorized(_hostName, keepOpen); }, head.keepAlive};
}

// The rest of what the head says, and what is to be done with the body.
Admission RequestHandler::accepted(const HttpRequest& head, const User& user) const {
    RequestContext context;
    context.address = head.peer;
    context.userName = fromUtf8(user.name);
    context.role = user.role;
    CimRequest cim;
    try {
        cim = readCimRequest(head);
    } catch (const BadRequest& badRequest) {
        return refused(head, badRequest, user.name);
    }
    context.acceptLanguage = fromUtf8(cim.acceptLanguage);
    context.contentLanguage = fromUtf8(cim.contentLanguage);
    const auto job = [this, cim = std::move(cim), context = std::move(context), name = user.name,
                      keepAlive = head.keepAlive](std::string body, ResponseChannel& channel) {
        try {
            MemoryBudget::Reservation memory(*_limits.memory, name);
            channel.holdIn(memory.another());
            DecodedRequest decoded =
                decodeRequest(std::move(body), cim.headers, _limits.depth, std::move(memory));
            return answer({_dispatcher, cim, decoded, context, channel, keepAlive,
                           _limits.queueBytes, decoded.memory});
        } catch (const BadRequest& badRequest) {
            const bool keepOpen = staysOpen(badRequest, keepAlive);
            tell(context.address, badRequest);
            if (badRequest.status() == outOfMemory) {
                channel.outOfMemory();
                channel.send(unavailable(badRequest.what(), tryAgainAfter, keepOpen));
            } else {
                channel.send(refusal(badRequest, keepOpen));
            }
            return keepOpen;
        }
    };
    return {job, {}, head.keepAlive, user.name};
}

Admission RequestHandler::refused(const HttpRequest& head, const BadRequest& badRequest,
                                  const std::optional<std::string>& user) const {
    tell(head.peer, badRequest);
    return {{},
            [badRequest](bool keepOpen) { return refusal(badRequest, keepOpen); },
            staysOpen(badRequest, head.keepAlive),
            user};
}

} // namespace smisd
