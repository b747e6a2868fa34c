#include "server/http/RequestHandler.h"

#include <gmock/gmock.h>

#include "tests/server/http/HandledRequest.h"

using namespace Pegasus;
using testing::HasSubstr;
using testing::StartsWith;

namespace smisd::test {
namespace {

TEST_F(HandledRequest, PassesUserAddressAndLanguages) {
    checkedBy = &authenticator;
    HttpRequest request = with(enumerateRequest(), "Authorization", "Basic good");
    request = with(with(request, "Accept-Language", "de"), "Content-Language", "en");
    request.peer = "192.0.2.7";
    handle(request);
    EXPECT_EQ(dispatcher.context.role, Role::reader);
    EXPECT_EQ(dispatcher.context.address, "192.0.2.7");
    EXPECT_EQ(authenticator.address, "192.0.2.7");
    EXPECT_TRUE(dispatcher.context.userName == String("alice"));
    EXPECT_TRUE(dispatcher.context.acceptLanguage == String("de"));
    EXPECT_TRUE(dispatcher.context.contentLanguage == String("en"));
}

TEST_F(HandledRequest, WithoutAuthenticationHasNoUser) {
    handle(with(enumerateRequest(), "Authorization", "Basic good"));
    EXPECT_TRUE(dispatcher.context.userName == String());
    EXPECT_EQ(dispatcher.context.role, Role::administrator);
    EXPECT_EQ(dispatcher.calls, 1);
}

TEST_F(HandledRequest, WithoutCredentialsIsAskedForThem) {
    checkedBy = &authenticator;
    EXPECT_TRUE(handle(enumerateRequest()));
    EXPECT_THAT(channel.bytes, StartsWith("HTTP/1.1 401 Unauthorized\r\n"
                                          "WWW-Authenticate: Basic realm=\"array1\"\r\n"));
    EXPECT_EQ(dispatcher.calls, 0);
}

TEST_F(HandledRequest, IsToBeTriedAgainWhenItsPasswordWasNotLookedAt) {
    checkedBy = &authenticator;
    EXPECT_TRUE(handle(with(enumerateRequest(), "Authorization", "Basic later")));
    EXPECT_THAT(channel.bytes,
                StartsWith("HTTP/1.1 503 Service Unavailable\r\nRetry-After: 3\r\n"));
    EXPECT_EQ(dispatcher.calls, 0);
}

TEST_F(HandledRequest, IsAuthenticatedBeforeItIsLookedAt) {
    checkedBy = &authenticator;
    HttpRequest request = with(enumerateRequest(), "CIMOperation", {});
    request.body = "no XML";
    handle(request);
    EXPECT_THAT(channel.bytes, StartsWith("HTTP/1.1 401 "));
}

TEST_F(HandledRequest, WithBadBodyIsRefused) {
    HttpRequest request = enumerateRequest();
    request.body = "no XML";
    EXPECT_TRUE(handle(request));
    EXPECT_THAT(channel.bytes,
                StartsWith("HTTP/1.1 400 Bad Request\r\nCIMError: request-not-valid\r\n"));
    EXPECT_EQ(dispatcher.calls, 0);
}

TEST_F(HandledRequest, WithDeeperBodyThanTheLimitIsRefused) {
    limits.depth = 6;
    handle(enumerateRequest());
    EXPECT_EQ(dispatcher.calls, 1);
    limits.depth = 5;
    handle(enumerateRequest());
    EXPECT_EQ(dispatcher.calls, 1);
    EXPECT_THAT(channel.bytes, HasSubstr("More%20than%205%20nested%20elements"));
}

TEST_F(HandledRequest, ForADocumentEndsTheConnection) {
    HttpRequest request = enumerateRequest();
    request.method = "GET";
    EXPECT_FALSE(handle(request));
    EXPECT_THAT(channel.bytes, StartsWith("HTTP/1.1 404 Not Found\r\n"));
    EXPECT_THAT(channel.bytes, HasSubstr("Connection: close\r\n"));
}

// Judged by its head

TEST_F(HandledRequest, IsAUsersWhenTheUserIsKnown) {
    checkedBy = &authenticator;
    const HttpRequest good = with(enumerateRequest(), "Authorization", "Basic good");
    EXPECT_TRUE(admitted(good).job);
    EXPECT_EQ(admitted(good).user, "alice");
    EXPECT_EQ(admitted(with(good, "CIMOperation", "Frob")).user, "alice");
    EXPECT_EQ(admitted(enumerateRequest()).user, std::nullopt);
    EXPECT_FALSE(admitted(enumerateRequest()).job);
    EXPECT_EQ(dispatcher.calls, 0);
}

TEST_F(HandledRequest, IsNotAcceptedWithBadHeaders) {
    const Admission admission = admitted(with(enumerateRequest(), "CIMOperation", "Frob"));
    EXPECT_FALSE(admission.job);
    EXPECT_TRUE(admission.keepOpen);
    EXPECT_THAT(admission.refusal(true),
                StartsWith("HTTP/1.1 400 Bad Request\r\nCIMError: unsupp"));
}

} // namespace
} // namespace smisd::test
