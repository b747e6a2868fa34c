// The response handlers that providers deliver to.
//
// A handler takes objects as OpenPegasus does: an object that is not initialized, one too many or
// one too few is CIM_ERR_FAILED, thrown at the provider. What a provider delivered but did not
// complete is lost, but for the full hundreds of a long answer, which go out as they come.
//
// Each serves one call of a provider, and one thread. The function that takes the results may
// throw; `passOn` throws that again where the provider has swallowed it.
#pragma once

#include <cstddef>
#include <exception>
#include <functional>
#include <optional>
#include <vector>

#include <Pegasus/Common/CIMParamValue.h>
#include <Pegasus/Common/CIMValue.h>
#include <Pegasus/Common/ResponseHandler.h>

#include "server/operation/Dispatcher.h"

namespace smisd {

// Throw CIM_ERR_FAILED with OpenPegasus' texts.
[[noreturn]] void failNotInitialized();
[[noreturn]] void failTooFew();
[[noreturn]] void failTooMany();

inline bool isInitialized(const Pegasus::CIMInstance& object) {
    return !object.isUninitialized();
}
inline bool isInitialized(const Pegasus::CIMObject& object) {
    return !object.isUninitialized();
}
inline bool isInitialized(const Pegasus::CIMObjectPath& object) {
    return !object.getClassName().isNull();
}
inline bool isInitialized(const Pegasus::CIMParamValue& object) {
    return !object.isUninitialized();
}
inline bool isInitialized(const Pegasus::CIMValue& object) {
    return !object.isNull();
}

template<class Object>
void requireInitialized(const Object& object) {
    if (!isInitialized(object)) {
        failNotInitialized();
    }
}

// What all handlers share: errors of the receiver of the results are not the provider's.
class ReceiverGuard {
public:
    // To be called when the provider has returned or thrown.
    void passOn() const {
        if (_error) {
            std::rethrow_exception(_error);
        }
    }

protected:
    template<class Hand>
    void guarded(Hand hand) {
        try {
            hand();
        } catch (...) {
            _error = std::current_exception();
            throw;
        }
    }

private:
    std::exception_ptr _error;
};

// For operations without a result.
class PlainHandler : public Pegasus::ResponseHandler, public ReceiverGuard {
public:
    void processing() override {}
    void complete() override {}
};

// For operations with exactly one result. It is taken at complete().
template<class Interface, class Object>
class SingleHandler : public Interface, public ReceiverGuard {
public:
    using Take = std::function<void(const Object&)>;

    explicit SingleHandler(Take take) : _take(std::move(take)) {}

    void processing() override {}

    void complete() override {
        if (_objects.empty()) {
            failTooFew();
        }
        if (!_isTaken) {
            this->guarded([&] { _take(_objects.front()); });
        }
        _isTaken = true;
    }

    void deliver(const Object& object) override {
        requireInitialized(object);
        if (!_objects.empty()) {
            failTooMany();
        }
        _objects.push_back(object);
    }

    void deliver(const Pegasus::Array<Object>& objects) override {
        for (Pegasus::Uint32 i = 0; i < objects.size(); ++i) {
            deliver(objects[i]);
        }
    }

private:
    Take _take;
    std::vector<Object> _objects;
    bool _isTaken = false;
};

// For operations with any number of results. They are taken by hundreds and at complete().
template<class Interface, class Object>
class ListHandler : public Interface, public ReceiverGuard {
public:
    using Take = std::function<void(const Object&)>;

    explicit ListHandler(Take take) : _take(std::move(take)) {}

    void processing() override {}

    void complete() override { flush(); }

    void deliver(const Object& object) override {
        requireInitialized(object);
        _objects.push_back(object);
        if (_objects.size() == hundred) {
            flush();
        }
    }

    void deliver(const Pegasus::Array<Object>& objects) override {
        for (Pegasus::Uint32 i = 0; i < objects.size(); ++i) {
            deliver(objects[i]);
        }
    }

private:
    static constexpr std::size_t hundred = 100;

    void flush() {
        this->guarded([&] {
            for (const Object& object : _objects) {
                _take(object);
            }
        });
        _objects.clear();
    }

    Take _take;
    std::vector<Object> _objects;
};

using InstanceHandler = SingleHandler<Pegasus::InstanceResponseHandler, Pegasus::CIMInstance>;
using InstanceListHandler = ListHandler<Pegasus::InstanceResponseHandler, Pegasus::CIMInstance>;
using PathHandler = SingleHandler<Pegasus::ObjectPathResponseHandler, Pegasus::CIMObjectPath>;
using PathListHandler = ListHandler<Pegasus::ObjectPathResponseHandler, Pegasus::CIMObjectPath>;
using ObjectListHandler = ListHandler<Pegasus::ObjectResponseHandler, Pegasus::CIMObject>;

// For extrinsic methods. At complete() the sink takes the return value, the last one of several,
// and then the output parameters in the order of their delivery. A null return value is refused as
// an object that is not initialized.
class MethodResultHandler : public Pegasus::MethodResultResponseHandler, public ReceiverGuard {
public:
    explicit MethodResultHandler(ResultSink& sink) : _sink(sink) {}

    void processing() override {}
    void complete() override;
    void deliver(const Pegasus::CIMValue& returnValue) override;
    void deliverParamValue(const Pegasus::CIMParamValue& parameter) override;
    void deliverParamValue(const Pegasus::Array<Pegasus::CIMParamValue>& parameters) override;

private:
    ResultSink& _sink;
    std::optional<Pegasus::CIMValue> _returnValue;
    std::vector<Pegasus::CIMParamValue> _parameters;
};

} // namespace smisd
