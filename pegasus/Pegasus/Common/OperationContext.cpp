#include <algorithm>

#include <Pegasus/Common/Exception.h>
#include <Pegasus/Common/OperationContext.h>

namespace Pegasus {

OperationContext::Container::~Container() = default;

OperationContext::OperationContext() = default;
OperationContext::~OperationContext() = default;

OperationContext::OperationContext(const OperationContext& x) {
    *this = x;
}

OperationContext& OperationContext::operator=(const OperationContext& x) {
    std::vector<Owned> copies;
    for (const Owned& container : x._containers) {
        copies.emplace_back(container->clone());
    }
    _containers = std::move(copies);
    return *this;
}

void OperationContext::clear() {
    _containers.clear();
}

// The number of containers if none has the name.
std::size_t OperationContext::_find(const String& name) const {
    const auto found = std::find_if(_containers.begin(), _containers.end(),
                                    [&](const Owned& c) { return c->getName() == name; });
    return static_cast<std::size_t>(found - _containers.begin());
}

std::size_t OperationContext::_present(const String& name) const {
    const std::size_t index = _find(name);
    if (index == _containers.size()) {
        throw Exception("object not found");
    }
    return index;
}

const OperationContext::Container& OperationContext::get(const String& name) const {
    return *_containers[_present(name)];
}

void OperationContext::set(const Container& container) {
    _containers[_present(container.getName())] = Owned(container.clone());
}

void OperationContext::insert(const Container& container) {
    if (_find(container.getName()) != _containers.size()) {
        throw Exception("object already exists.");
    }
    _containers.emplace_back(container.clone());
}

void OperationContext::remove(const String& name) {
    _containers.erase(_containers.begin() + static_cast<std::ptrdiff_t>(_present(name)));
}

} // namespace Pegasus
