#pragma once

#include <memory>
#include <vector>

#include <Pegasus/Common/Array.h>
#include <Pegasus/Common/CIMInstance.h>
#include <Pegasus/Common/CIMName.h>
#include <Pegasus/Common/CIMObjectPath.h>
#include <Pegasus/Common/String.h>

namespace Pegasus {

// What the server tells a provider about a request beside its arguments, in containers with
// distinct names (case matters).
//
// Threads: any number may read the same context.
class PEGASUS_COMMON_LINKAGE OperationContext {
public:
    class PEGASUS_COMMON_LINKAGE Container {
    public:
        virtual ~Container();
        virtual String getName() const = 0;
        virtual Container* clone() const = 0; // the caller ends it with destroy()
        virtual void destroy() = 0;
    };

    OperationContext();
    OperationContext(const OperationContext& x);
    virtual ~OperationContext();
    OperationContext& operator=(const OperationContext& x);

    void clear();
    // get, set and remove throw Exception when no container has the name, insert when one has.
    // The reference lives until the container is replaced or removed.
    const Container& get(const String& name) const;
    void set(const Container& container);
    void insert(const Container& container);
    void remove(const String& name);

private:
    struct Destroyer {
        void operator()(Container* container) const { container->destroy(); }
    };
    typedef std::unique_ptr<Container, Destroyer> Owned;

    std::size_t _find(const String& name) const;
    std::size_t _present(const String& name) const;

    std::vector<Owned> _containers;
};

// The containers below throw DynamicCastFailedException when made from one of another kind.

// The user who sent the request; "" without authentication.
class PEGASUS_COMMON_LINKAGE IdentityContainer : virtual public OperationContext::Container {
public:
    static const String NAME;

    IdentityContainer(const OperationContext::Container& container);
    IdentityContainer(const IdentityContainer& container);
    IdentityContainer(const String& userName);
    ~IdentityContainer() override;
    IdentityContainer& operator=(const IdentityContainer& container);
    String getName() const override;
    OperationContext::Container* clone() const override;
    void destroy() override;
    String getUserName() const;

private:
    String _userName;
};

class PEGASUS_COMMON_LINKAGE SubscriptionInstanceContainer
    : virtual public OperationContext::Container {
public:
    static const String NAME;

    SubscriptionInstanceContainer(const OperationContext::Container& container);
    SubscriptionInstanceContainer(const SubscriptionInstanceContainer& container);
    SubscriptionInstanceContainer(const CIMInstance& subscriptionInstance);
    ~SubscriptionInstanceContainer() override;
    SubscriptionInstanceContainer& operator=(const SubscriptionInstanceContainer& container);
    String getName() const override;
    OperationContext::Container* clone() const override;
    void destroy() override;
    CIMInstance getInstance() const;

private:
    CIMInstance _subscriptionInstance;
};

class PEGASUS_COMMON_LINKAGE SubscriptionInstanceNamesContainer
    : virtual public OperationContext::Container {
public:
    static const String NAME;

    SubscriptionInstanceNamesContainer(const OperationContext::Container& container);
    SubscriptionInstanceNamesContainer(const SubscriptionInstanceNamesContainer& container);
    SubscriptionInstanceNamesContainer(const Array<CIMObjectPath>& subscriptionInstanceNames);
    ~SubscriptionInstanceNamesContainer() override;
    SubscriptionInstanceNamesContainer&
    operator=(const SubscriptionInstanceNamesContainer& container);
    String getName() const override;
    OperationContext::Container* clone() const override;
    void destroy() override;
    Array<CIMObjectPath> getInstanceNames() const;

private:
    Array<CIMObjectPath> _subscriptionInstanceNames;
};

class PEGASUS_COMMON_LINKAGE SubscriptionFilterConditionContainer
    : virtual public OperationContext::Container {
public:
    static const String NAME;

    SubscriptionFilterConditionContainer(const OperationContext::Container& container);
    SubscriptionFilterConditionContainer(const SubscriptionFilterConditionContainer& container);
    SubscriptionFilterConditionContainer(const String& filterCondition,
                                         const String& queryLanguage);
    ~SubscriptionFilterConditionContainer() override;
    SubscriptionFilterConditionContainer&
    operator=(const SubscriptionFilterConditionContainer& container);
    String getName() const override;
    OperationContext::Container* clone() const override;
    void destroy() override;
    String getFilterCondition() const;
    String getQueryLanguage() const;

private:
    String _filterCondition;
    String _queryLanguage;
};

class PEGASUS_COMMON_LINKAGE SubscriptionFilterQueryContainer
    : virtual public OperationContext::Container {
public:
    static const String NAME;

    SubscriptionFilterQueryContainer(const OperationContext::Container& container);
    SubscriptionFilterQueryContainer(const SubscriptionFilterQueryContainer& container);
    SubscriptionFilterQueryContainer(const String& filterQuery, const String& queryLanguage,
                                     const CIMNamespaceName& sourceNameSpace);
    ~SubscriptionFilterQueryContainer() override;
    SubscriptionFilterQueryContainer& operator=(const SubscriptionFilterQueryContainer& container);
    String getName() const override;
    OperationContext::Container* clone() const override;
    void destroy() override;
    String getFilterQuery() const;
    String getQueryLanguage() const;
    CIMNamespaceName getSourceNameSpace() const;

private:
    String _filterQuery;
    String _queryLanguage;
    CIMNamespaceName _sourceNameSpace;
};

class PEGASUS_COMMON_LINKAGE TimeoutContainer : virtual public OperationContext::Container {
public:
    static const String NAME;

    TimeoutContainer(const OperationContext::Container& container);
    TimeoutContainer(Uint32 timeout);
    String getName() const override;
    OperationContext::Container* clone() const override;
    void destroy() override;
    Uint32 getTimeOut() const;

private:
    Uint32 _timeout; // milliseconds
};

class PEGASUS_COMMON_LINKAGE SnmpTrapOidContainer : virtual public OperationContext::Container {
public:
    static const String NAME;

    SnmpTrapOidContainer(const OperationContext::Container& container);
    SnmpTrapOidContainer(const SnmpTrapOidContainer& container);
    SnmpTrapOidContainer(const String& snmpTrapOid);
    ~SnmpTrapOidContainer() override;
    SnmpTrapOidContainer& operator=(const SnmpTrapOidContainer& container);
    String getName() const override;
    OperationContext::Container* clone() const override;
    void destroy() override;
    String getSnmpTrapOid() const;

private:
    String _snmpTrapOid;
};

} // namespace Pegasus
