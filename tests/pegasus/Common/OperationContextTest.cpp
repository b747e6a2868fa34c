#include <Pegasus/Common/OperationContext.h>
#include <gtest/gtest.h>

#include "tests/pegasus/Text.h"

using namespace Pegasus;

static String userOf(const OperationContext& context) {
    return IdentityContainer(context.get(IdentityContainer::NAME)).getUserName();
}

TEST(OperationContext, GivesBackWhatWasInserted) {
    OperationContext context;
    context.insert(IdentityContainer("someone"));
    context.insert(TimeoutContainer(5000));
    EXPECT_EQ(userOf(context), "someone");
    EXPECT_EQ(TimeoutContainer(context.get(TimeoutContainer::NAME)).getTimeOut(), 5000u);
}

TEST(OperationContext, NamesAreThoseOfTheClasses) {
    EXPECT_EQ(IdentityContainer::NAME, "IdentityContainer");
    EXPECT_EQ(IdentityContainer("x").getName(), "IdentityContainer");
    EXPECT_EQ(SubscriptionInstanceContainer::NAME, "SubscriptionInstanceContainer");
    EXPECT_EQ(SubscriptionInstanceNamesContainer::NAME, "SubscriptionInstanceNamesContainer");
    EXPECT_EQ(SubscriptionFilterConditionContainer::NAME, "SubscriptionFilterConditionContainer");
    EXPECT_EQ(SubscriptionFilterQueryContainer::NAME, "SubscriptionFilterQueryContainer");
    EXPECT_EQ(TimeoutContainer::NAME, "TimeoutContainer");
    EXPECT_EQ(SnmpTrapOidContainer::NAME, "SnmpTrapOidContainer");
}

TEST(OperationContext, AMissingNameThrows) {
    OperationContext context;
    EXPECT_EQ(messageOf([&] { context.get("IdentityContainer"); }), "object not found");
    EXPECT_EQ(messageOf([&] { context.set(IdentityContainer("x")); }), "object not found");
    EXPECT_EQ(messageOf([&] { context.remove("IdentityContainer"); }), "object not found");
}

TEST(OperationContext, NamesAreCaseSensitive) {
    OperationContext context;
    context.insert(IdentityContainer("x"));
    EXPECT_THROW(context.get("identitycontainer"), Exception);
}

TEST(OperationContext, InsertOfAPresentNameThrowsAndSetReplacesIt) {
    OperationContext context;
    context.insert(IdentityContainer("first"));
    EXPECT_EQ(messageOf([&] { context.insert(IdentityContainer("second")); }),
              "object already exists.");
    EXPECT_EQ(userOf(context), "first");
    context.set(IdentityContainer("third"));
    EXPECT_EQ(userOf(context), "third");
}

TEST(OperationContext, RemoveAndClearTakeAway) {
    OperationContext context;
    context.insert(IdentityContainer("x"));
    context.insert(TimeoutContainer(1));
    context.remove(IdentityContainer::NAME);
    EXPECT_THROW(context.get(IdentityContainer::NAME), Exception);
    EXPECT_NO_THROW(context.get(TimeoutContainer::NAME));
    context.clear();
    EXPECT_THROW(context.get(TimeoutContainer::NAME), Exception);
}

TEST(OperationContext, CopiesAreIndependent) {
    OperationContext context;
    context.insert(IdentityContainer("x"));
    OperationContext copy(context), assigned;
    assigned = context;
    context.set(IdentityContainer("y"));
    EXPECT_EQ(userOf(copy), "x");
    EXPECT_EQ(userOf(assigned), "x");
}

TEST(OperationContext, AContainerOfAnotherKindThrows) {
    const TimeoutContainer timeout(1);
    const OperationContext::Container& container = timeout;
    EXPECT_THROW(IdentityContainer{container}, DynamicCastFailedException);
}

TEST(OperationContext, ContainersKeepTheirContent) {
    OperationContext context;
    context.insert(SubscriptionFilterConditionContainer("condition", "language"));
    context.insert(SubscriptionFilterQueryContainer("query", "lang", CIMNamespaceName("root")));
    context.insert(
        SubscriptionInstanceNamesContainer(Array<CIMObjectPath>(2, CIMObjectPath("C.k=1"))));
    context.insert(SubscriptionInstanceContainer(CIMInstance(CIMName("C"))));
    context.insert(SnmpTrapOidContainer("1.2.3"));
    const SubscriptionFilterConditionContainer condition(
        context.get(SubscriptionFilterConditionContainer::NAME));
    EXPECT_EQ(condition.getFilterCondition(), "condition");
    EXPECT_EQ(condition.getQueryLanguage(), "language");
    const SubscriptionFilterQueryContainer query(
        context.get(SubscriptionFilterQueryContainer::NAME));
    EXPECT_EQ(query.getFilterQuery(), "query");
    EXPECT_EQ(query.getQueryLanguage(), "lang");
    EXPECT_EQ(query.getSourceNameSpace().getString(), "root");
    const SubscriptionInstanceNamesContainer names(
        context.get(SubscriptionInstanceNamesContainer::NAME));
    EXPECT_EQ(names.getInstanceNames().size(), 2u);
    const SubscriptionInstanceContainer subscription(
        context.get(SubscriptionInstanceContainer::NAME));
    EXPECT_EQ(subscription.getInstance().getClassName().getString(), "C");
    EXPECT_EQ(SnmpTrapOidContainer(context.get(SnmpTrapOidContainer::NAME)).getSnmpTrapOid(),
              "1.2.3");
}
