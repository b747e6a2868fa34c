// Responses but for their bodies: status lines, headers and chunks, as OpenPegasus writes them.
#pragma once

#include <chrono>
#include <cstddef>
#include <string>
#include <string_view>

#include "server/cimxml/XmlDocument.h"
#include "server/http/CimRequest.h"

namespace smisd {

// Of a body of known length.
std::string answerHead(const CimRequest& request, std::size_t bodyLength, bool keepOpen);

// Of a body that is sent in chunks; a trailer may follow if the request allows it.
std::string chunkedAnswerHead(const CimRequest& request, bool keepOpen);

// Of a body that ends with the connection, for HTTP/1.0.
std::string endlessAnswerHead(const CimRequest& request);

// The piece as a chunk. `spare` gives its room to the result.
std::string chunk(std::string_view piece, std::string spare = {});
std::string lastChunk();
// The last chunk after an error; `description` is what a body would have said in its place.
std::string lastChunk(int statusCode, const std::string& description);

// A response without body. Its length is stated, so that the client does not wait for the end of
// the connection.
std::string refusal(const BadRequest& badRequest, bool keepOpen);
std::string unavailable(const std::string& detail, std::chrono::seconds tryAgainAfter,
                        bool keepOpen);
std::string unauthorized(const std::string& realm, bool keepOpen);

} // namespace smisd
