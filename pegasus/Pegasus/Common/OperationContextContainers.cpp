// The kinds of containers.

#include <Pegasus/Common/Exception.h>
#include <Pegasus/Common/OperationContext.h>

namespace Pegasus {

// The container as one of the kind that it must be.
template<class T>
static const T& as(const OperationContext::Container& container) {
    const T* specific = dynamic_cast<const T*>(&container);
    if (!specific) {
        throw DynamicCastFailedException();
    }
    return *specific;
}

const String IdentityContainer::NAME("IdentityContainer");

IdentityContainer::IdentityContainer(const OperationContext::Container& container)
    : IdentityContainer(as<IdentityContainer>(container)) {}

IdentityContainer::IdentityContainer(const IdentityContainer& container) = default;
IdentityContainer& IdentityContainer::operator=(const IdentityContainer& container) = default;
IdentityContainer::~IdentityContainer() = default;

IdentityContainer::IdentityContainer(const String& userName) : _userName(userName) {}

String IdentityContainer::getName() const {
    return NAME;
}

OperationContext::Container* IdentityContainer::clone() const {
    return new IdentityContainer(*this);
}

void IdentityContainer::destroy() {
    delete this;
}

String IdentityContainer::getUserName() const {
    return _userName;
}

const String SubscriptionInstanceContainer::NAME("SubscriptionInstanceContainer");

SubscriptionInstanceContainer::SubscriptionInstanceContainer(
    const OperationContext::Container& container)
    : SubscriptionInstanceContainer(as<SubscriptionInstanceContainer>(container)) {}

SubscriptionInstanceContainer::SubscriptionInstanceContainer(
    const SubscriptionInstanceContainer& container) = default;
SubscriptionInstanceContainer&
SubscriptionInstanceContainer::operator=(const SubscriptionInstanceContainer& container) = default;
SubscriptionInstanceContainer::~SubscriptionInstanceContainer() = default;

SubscriptionInstanceContainer::SubscriptionInstanceContainer(
    const CIMInstance& subscriptionInstance)
    : _subscriptionInstance(subscriptionInstance) {}

String SubscriptionInstanceContainer::getName() const {
    return NAME;
}

OperationContext::Container* SubscriptionInstanceContainer::clone() const {
    return new SubscriptionInstanceContainer(*this);
}

void SubscriptionInstanceContainer::destroy() {
    delete this;
}

CIMInstance SubscriptionInstanceContainer::getInstance() const {
    return _subscriptionInstance;
}

const String SubscriptionInstanceNamesContainer::NAME("SubscriptionInstanceNamesContainer");

SubscriptionInstanceNamesContainer::SubscriptionInstanceNamesContainer(
    const OperationContext::Container& container)
    : SubscriptionInstanceNamesContainer(as<SubscriptionInstanceNamesContainer>(container)) {}

SubscriptionInstanceNamesContainer::SubscriptionInstanceNamesContainer(
    const SubscriptionInstanceNamesContainer& container) = default;
SubscriptionInstanceNamesContainer& SubscriptionInstanceNamesContainer::operator=(
    const SubscriptionInstanceNamesContainer& container) = default;
SubscriptionInstanceNamesContainer::~SubscriptionInstanceNamesContainer() = default;

SubscriptionInstanceNamesContainer::SubscriptionInstanceNamesContainer(
    const Array<CIMObjectPath>& subscriptionInstanceNames)
    : _subscriptionInstanceNames(subscriptionInstanceNames) {}

String SubscriptionInstanceNamesContainer::getName() const {
    return NAME;
}

OperationContext::Container* SubscriptionInstanceNamesContainer::clone() const {
    return new SubscriptionInstanceNamesContainer(*this);
}

void SubscriptionInstanceNamesContainer::destroy() {
    delete this;
}

Array<CIMObjectPath> SubscriptionInstanceNamesContainer::getInstanceNames() const {
    return _subscriptionInstanceNames;
}

const String SubscriptionFilterConditionContainer::NAME("SubscriptionFilterConditionContainer");

SubscriptionFilterConditionContainer::SubscriptionFilterConditionContainer(
    const OperationContext::Container& container)
    : SubscriptionFilterConditionContainer(as<SubscriptionFilterConditionContainer>(container)) {}

SubscriptionFilterConditionContainer::SubscriptionFilterConditionContainer(
    const SubscriptionFilterConditionContainer& container) = default;
SubscriptionFilterConditionContainer& SubscriptionFilterConditionContainer::operator=(
    const SubscriptionFilterConditionContainer& container) = default;
SubscriptionFilterConditionContainer::~SubscriptionFilterConditionContainer() = default;

SubscriptionFilterConditionContainer::SubscriptionFilterConditionContainer(
    const String& filterCondition, const String& queryLanguage)
    : _filterCondition(filterCondition), _queryLanguage(queryLanguage) {}

String SubscriptionFilterConditionContainer::getName() const {
    return NAME;
}

OperationContext::Container* SubscriptionFilterConditionContainer::clone() const {
    return new SubscriptionFilterConditionContainer(*this);
}

void SubscriptionFilterConditionContainer::destroy() {
    delete this;
}

String SubscriptionFilterConditionContainer::getFilterCondition() const {
    return _filterCondition;
}

String SubscriptionFilterConditionContainer::getQueryLanguage() const {
    return _queryLanguage;
}

const String SubscriptionFilterQueryContainer::NAME("SubscriptionFilterQueryContainer");

SubscriptionFilterQueryContainer::SubscriptionFilterQueryContainer(
    const OperationContext::Container& container)
    : SubscriptionFilterQueryContainer(as<SubscriptionFilterQueryContainer>(container)) {}

SubscriptionFilterQueryContainer::SubscriptionFilterQueryContainer(
    const SubscriptionFilterQueryContainer& container) = default;
SubscriptionFilterQueryContainer& SubscriptionFilterQueryContainer::operator=(
    const SubscriptionFilterQueryContainer& container) = default;
SubscriptionFilterQueryContainer::~SubscriptionFilterQueryContainer() = default;

SubscriptionFilterQueryContainer::SubscriptionFilterQueryContainer(
    const String& filterQuery, const String& queryLanguage, const CIMNamespaceName& sourceNameSpace)
    : _filterQuery(filterQuery), _queryLanguage(queryLanguage), _sourceNameSpace(sourceNameSpace) {}

String SubscriptionFilterQueryContainer::getName() const {
    return NAME;
}

OperationContext::Container* SubscriptionFilterQueryContainer::clone() const {
    return new SubscriptionFilterQueryContainer(*this);
}

void SubscriptionFilterQueryContainer::destroy() {
    delete this;
}

String SubscriptionFilterQueryContainer::getFilterQuery() const {
    return _filterQuery;
}

String SubscriptionFilterQueryContainer::getQueryLanguage() const {
    return _queryLanguage;
}

CIMNamespaceName SubscriptionFilterQueryContainer::getSourceNameSpace() const {
    return _sourceNameSpace;
}

const String TimeoutContainer::NAME("TimeoutContainer");

TimeoutContainer::TimeoutContainer(const OperationContext::Container& container)
    : TimeoutContainer(as<TimeoutContainer>(container)) {}

TimeoutContainer::TimeoutContainer(Uint32 timeout) : _timeout(timeout) {}

String TimeoutContainer::getName() const {
    return NAME;
}

OperationContext::Container* TimeoutContainer::clone() const {
    return new TimeoutContainer(*this);
}

void TimeoutContainer::destroy() {
    delete this;
}

Uint32 TimeoutContainer::getTimeOut() const {
    return _timeout;
}

const String SnmpTrapOidContainer::NAME("SnmpTrapOidContainer");

SnmpTrapOidContainer::SnmpTrapOidContainer(const OperationContext::Container& container)
    : SnmpTrapOidContainer(as<SnmpTrapOidContainer>(container)) {}

SnmpTrapOidContainer::SnmpTrapOidContainer(const SnmpTrapOidContainer& container) = default;
SnmpTrapOidContainer&
SnmpTrapOidContainer::operator=(const SnmpTrapOidContainer& container) = default;
SnmpTrapOidContainer::~SnmpTrapOidContainer() = default;

SnmpTrapOidContainer::SnmpTrapOidContainer(const String& snmpTrapOid) : _snmpTrapOid(snmpTrapOid) {}

String SnmpTrapOidContainer::getName() const {
    return NAME;
}

OperationContext::Container* SnmpTrapOidContainer::clone() const {
    return new SnmpTrapOidContainer(*this);
}

void SnmpTrapOidContainer::destroy() {
    delete this;
}

String SnmpTrapOidContainer::getSnmpTrapOid() const {
    return _snmpTrapOid;
}

} // namespace Pegasus
