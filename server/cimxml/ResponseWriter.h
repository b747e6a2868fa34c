// From the results of an operation to the body of the response (DSP0201, "Message Elements").
#pragma once

#include <functional>
#include <string>
#include <string_view>

#include <Pegasus/Common/Exception.h>

#include "pegasus/host/Text.h"
#include "pegasus/host/XmlWriter.h"
#include "server/cimxml/RequestDecoder.h"
#include "server/operation/Dispatcher.h"
#include "server/operation/Operation.h"

namespace smisd {

// Encodes each result as it is delivered: the properties of the list in the order of the list,
// qualifiers and class origins only when they were asked for.
//
// What of the body has not gone out is held in `memory`; CIM_ERR_SERVER_LIMITS_EXCEEDED, thrown
// through the delivering call, when there is none.
//
// With a `flush`, the body goes out in pieces: it is called with the next one after each hundred
// results. What it throws, passes through the delivering call. One thread at a time.
class ResponseWriter : public ResultSink {
public:
    using Flush = std::function<void(std::string_view piece)>;

    // `head`, `operation` and `memory` outlive the writer.
    ResponseWriter(const MessageHead& head, const Operation& operation, Flush flush = nullptr,
                   MemoryBudget::Reservation* memory = nullptr);

    // The rest of the body.
    std::string finish();
    // The rest of the body after an error: results that were not flushed are dropped.
    std::string finishAfterError();

    // Whether a part of the body went out.
    bool flushed() const { return _flushed; }

    void limitProperties(const Pegasus::CIMPropertyList& properties) override;
    void includeClassOrigin() override;
    void instance(const Pegasus::CIMInstance& instance) override;
    void namedInstance(const Pegasus::CIMInstance& instance) override;
    void instanceName(const Pegasus::CIMObjectPath& path) override;
    void objectWithPath(const Pegasus::CIMObject& object) override;
    void objectPath(const Pegasus::CIMObjectPath& path) override;
    void instanceWithPath(const Pegasus::CIMObjectPath& path,
                          const Pegasus::CIMInstance& instance) override;
    void instancePath(const Pegasus::CIMObjectPath& path) override;
    void returnValue(const Pegasus::CIMValue& value) override;
    void outParameter(const Pegasus::CIMParamValue& parameter) override;
    void classDeclaration(const Pegasus::CIMClass& declaration) override;
    void className(const Pegasus::CIMName& name) override;
    void qualifier(const QualifierDeclaration& declaration) override;

private:
    static constexpr std::size_t leastHeld = 256 * 1024; // by whoever has a request answered

    template<class Append>
    void add(Append append);
    void flushIfDue();
    void hold();

    const MessageHead& _head;
    const Flush _flush;
    MemoryBudget::Reservation* const _memory; // or null
    std::size_t _heldFor = leastHeld;         // bytes of the text
    bool _ofClass;                            // the operation is on the associations of a class
    Pegasus::Xml::Parts _parts;               // what of an instance goes out
    Pegasus::Text _text;                      // of the body, not yet flushed
    Pegasus::Text _outParameters;             // follow what is returned
    unsigned _pendingCount = 0;               // of results in _text
    bool _hasResults = false;                 // IRETURNVALUE was opened
    bool _flushed = false;
};

// The body that answers an operation with an error.
std::string errorBody(const MessageHead& head, const Pegasus::CIMException& error);

// "CIM_ERR_FAILED: text", as in the DESCRIPTION of an ERROR.
std::string errorDescription(const Pegasus::CIMException& error);

} // namespace smisd
