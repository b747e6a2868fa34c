// bench_constant: answers every request on a free port of the loopback interface with the same
// body, through smisd's own HTTP layer: what is left of a request when nothing is done for it.

#include <iostream>
#include <string>

#include "server/http/HttpServer.h"

int main() {
    const std::string body(1000, 'x'); // about as long as an answer to GetInstance of a host
    const std::string answer =
        "HTTP/1.1 200 OK\r\ncontent-type: application/xml\r\ncontent-length: " +
        std::to_string(body.size()) + "\r\n\r\n" + body;
    smisd::HttpServer server(smisd::HttpLimits(), [&answer](const smisd::HttpRequest& request,
                                                            const smisd::Decide& decide) {
        const auto job = [&answer, keepAlive = request.keepAlive](const std::string&,
                                                                  smisd::ResponseChannel& channel) {
            channel.send(answer);
            return keepAlive;
        };
        decide({job, {}, false, ""});
    });
    const unsigned short port = server.listen({"127.0.0.1", 0});
    std::cout << "listening on http://127.0.0.1:" << port << std::endl;
    server.run();
    return 0;
}
