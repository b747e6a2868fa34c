// The counted bodies behind handles and value types. Not a header of OpenPegasus.
//
// Threads: the count is atomic, so that copies of one handle may be made and dropped by several
// threads at once. Nothing guards the body itself.

#pragma once

#include <utility>

#include <Pegasus/Common/Linkage.h>
#include <Pegasus/Common/OwnerCount.h>

namespace Pegasus {

class PEGASUS_COMMON_LINKAGE SharedRep {
public:
    SharedRep() = default;
    SharedRep(const SharedRep&) {} // a copy has owners of its own
    SharedRep& operator=(const SharedRep&) = delete;
    virtual ~SharedRep();

    void addOwner() { _owners.add(); }
    void dropOwner() {
        if (_owners.drop()) {
            _end();
        }
    }
    bool shared() const { return _owners.shared(); }

private:
    void _end();

    OwnerCount _owners;
};

[[noreturn]] PEGASUS_COMMON_LINKAGE void throwUninitializedObject();

// One owner of a body derived from SharedRep, or of none. T may be incomplete where handles are
// only copied.
template<class T>
class Shared {
public:
    Shared() = default;
    // Of a new body, whose first owner this is.
    explicit Shared(T* rep) : _rep(rep) {}
    Shared(const Shared& other) noexcept : _rep(other._rep) {
        if (_rep) {
            _rep->addOwner();
        }
    }
    Shared(Shared&& other) noexcept : _rep(std::exchange(other._rep, nullptr)) {}
    Shared& operator=(Shared other) noexcept {
        std::swap(_rep, other._rep);
        return *this;
    }
    ~Shared() {
        if (_rep) {
            _rep->dropOwner();
        }
    }

    explicit operator bool() const { return _rep; }
    T* get() const { return static_cast<T*>(_rep); }

    // For handles: the body, or UninitializedObjectException if there is none.
    T* operator->() const {
        if (!_rep) {
            throwUninitializedObject();
        }
        return get();
    }
    T& operator*() const { return *operator->(); }

    // For values: a body that nobody else sees, made or copied if need be.
    T& own() {
        if (!_rep) {
            *this = Shared(new T);
        } else if (_rep->shared()) {
            *this = Shared(new T(*get()));
        }
        return *get();
    }

private:
    SharedRep* _rep = nullptr;
};

} // namespace Pegasus
