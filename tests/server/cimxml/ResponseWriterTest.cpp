#include "server/cimxml/ResponseWriter.h"

#include <string>
#include <vector>

#include <gtest/gtest.h>

using namespace Pegasus;

namespace smisd::test {
namespace {

const std::string start = "<?xml version=\"1.0\" encoding=\"utf-8\" ?>\n"
                          "<CIM CIMVERSION=\"2.0\" DTDVERSION=\"2.0\">\n"
                          "<MESSAGE ID=\"7\" PROTOCOLVERSION=\"1.0\">\n"
                          "<SIMPLERSP>\n";
const std::string end = "</SIMPLERSP>\n</MESSAGE>\n</CIM>\n";

std::string intrinsic(const std::string& method, const std::string& content) {
    return start + "<IMETHODRESPONSE NAME=\"" + method + "\">\n" + content +
           "</IMETHODRESPONSE>\n" + end;
}

std::string returned(const std::string& method, const std::string& content) {
    return intrinsic(method, "<IRETURNVALUE>\n" + content + "</IRETURNVALUE>\n");
}

// The body that the writer makes for `operation` of what `deliver` delivers.
template<class Deliver>
std::string bodyOf(const std::string& method, const Operation& operation, Deliver deliver) {
    const MessageHead head{"7", method, !std::holds_alternative<InvokeMethod>(operation)};
    ResponseWriter writer(head, operation);
    deliver(writer);
    return writer.finish();
}

CIMObjectPath pathOf(const char* key) {
    Array<CIMKeyBinding> keys;
    keys.append(CIMKeyBinding(CIMName("k"), String(key), CIMKeyBinding::STRING));
    return CIMObjectPath("host", CIMNamespaceName("root/x"), CIMName("C"), keys);
}

// With the properties "a" and "b", each with a qualifier and a class origin.
CIMInstance richInstance() {
    CIMInstance instance{CIMName("C")};
    instance.addQualifier(CIMQualifier(CIMName("Version"), CIMValue(String("1"))));
    for (const char* name : {"a", "b"}) {
        CIMProperty property(CIMName(name), CIMValue(String("x")), 0, CIMName(), CIMName("B"),
                             true);
        property.addQualifier(
            CIMQualifier(CIMName("Key"), CIMValue(Boolean(true)), CIMFlavor(CIMFlavor::DEFAULTS)));
        instance.addProperty(property);
    }
    instance.setPath(pathOf("v"));
    return instance;
}

std::string plainProperty(const std::string& name) {
    return "<PROPERTY NAME=\"" + name + "\"  PROPAGATED=\"true\" TYPE=\"string\">\n" +
           "<VALUE>x</VALUE>\n</PROPERTY>\n";
}

const std::string plainInstance =
    "<INSTANCE CLASSNAME=\"C\" >\n" + plainProperty("a") + plainProperty("b") + "</INSTANCE>\n";
const std::string instanceName = "<INSTANCENAME CLASSNAME=\"C\">\n<KEYBINDING NAME=\"k\">\n"
                                 "<KEYVALUE VALUETYPE=\"string\">v</KEYVALUE>\n</KEYBINDING>\n"
                                 "</INSTANCENAME>\n";
const std::string namespacePath = "<NAMESPACEPATH>\n<HOST>host</HOST>\n<LOCALNAMESPACEPATH>\n"
                                  "<NAMESPACE NAME=\"root\"/>\n<NAMESPACE NAME=\"x\"/>\n"
                                  "</LOCALNAMESPACEPATH>\n</NAMESPACEPATH>\n";

const auto nothing = [](ResultSink&) {};

TEST(ResponseWriter, GetInstanceSendsNoPathAndNothingThatWasNotAskedFor) {
    EXPECT_EQ(bodyOf("GetInstance", GetInstance(),
                     [](ResultSink& sink) { sink.instance(richInstance()); }),
              returned("GetInstance", plainInstance));
}

TEST(ResponseWriter, QualifiersAndClassOriginsAreSentWhenAskedFor) {
    GetInstance operation;
    operation.includeQualifiers = true;
    operation.includeClassOrigin = true;
    const std::string body =
        bodyOf("GetInstance", operation, [](ResultSink& sink) { sink.instance(richInstance()); });
    EXPECT_NE(body.find("<QUALIFIER NAME=\"Version\""), std::string::npos) << body;
    EXPECT_NE(body.find("CLASSORIGIN=\"B\""), std::string::npos) << body;
    EXPECT_NE(body.find("<QUALIFIER NAME=\"Key\""), std::string::npos) << body;
}

TEST(ResponseWriter, PropertiesComeInTheOrderOfTheList) {
    GetInstance operation;
    Array<CIMName> names;
    for (const char* name : {"B", "nosuch", "a"}) {
        names.append(CIMName(name));
    }
    operation.propertyList = CIMPropertyList(names);
    EXPECT_EQ(
        bodyOf("GetInstance", operation, [](ResultSink& sink) { sink.instance(richInstance()); }),
        returned("GetInstance", "<INSTANCE CLASSNAME=\"C\" >\n" + plainProperty("b") +
                                    plainProperty("a") + "</INSTANCE>\n"));
}

TEST(ResponseWriter, DispatcherMayLimitTheProperties) {
    Array<CIMName> names;
    names.append(CIMName("a"));
    EXPECT_EQ(bodyOf("EnumerateInstances", EnumerateInstances(),
                     [&](ResultSink& sink) {
                         sink.limitProperties(CIMPropertyList(names));
                         sink.namedInstance(richInstance());
                     }),
              returned("EnumerateInstances",
                       "<VALUE.NAMEDINSTANCE>\n" + instanceName + "<INSTANCE CLASSNAME=\"C\" >\n" +
                           plainProperty("a") + "</INSTANCE>\n" + "</VALUE.NAMEDINSTANCE>\n"));
}

TEST(ResponseWriter, EnumerationsNameInstancesWithoutHostAndNamespace) {
    EXPECT_EQ(bodyOf("EnumerateInstanceNames", EnumerateInstanceNames(),
                     [](ResultSink& sink) {
                         sink.instanceName(pathOf("v"));
                         sink.instanceName(pathOf("v"));
                     }),
              returned("EnumerateInstanceNames", instanceName + instanceName));
}

TEST(ResponseWriter, AssociatorsHaveWholePaths) {
    EXPECT_EQ(bodyOf("Associators", Associators(),
                     [](ResultSink& sink) { sink.objectWithPath(CIMObject(richInstance())); }),
              returned("Associators", "<VALUE.OBJECTWITHPATH>\n<INSTANCEPATH>\n" + namespacePath +
                                          instanceName + "</INSTANCEPATH>\n" + plainInstance +
                                          "</VALUE.OBJECTWITHPATH>\n"));
    EXPECT_EQ(bodyOf("AssociatorNames", AssociatorNames(),
                     [](ResultSink& sink) { sink.objectPath(pathOf("v")); }),
              returned("AssociatorNames", "<OBJECTPATH>\n<INSTANCEPATH>\n" + namespacePath +
                                              instanceName + "</INSTANCEPATH>\n</OBJECTPATH>\n"));
}

TEST(ResponseWriter, AssociationsOfAClassAreClasses) {
    ReferenceNames operation;
    operation.ofClass = true;
    const CIMObjectPath path("host", CIMNamespaceName("root/x"), CIMName("C"));
    EXPECT_EQ(bodyOf("ReferenceNames", operation, [&](ResultSink& sink) { sink.objectPath(path); }),
              returned("ReferenceNames", "<OBJECTPATH>\n<CLASSPATH>\n" + namespacePath +
                                             "<CLASSNAME NAME=\"C\"/>\n</CLASSPATH>\n"
                                             "</OBJECTPATH>\n"));
}

TEST(ResponseWriter, NoResultsLeaveTheResponseEmpty) {
    EXPECT_EQ(bodyOf("DeleteInstance", DeleteInstance(), nothing), intrinsic("DeleteInstance", ""));
    EXPECT_EQ(bodyOf("EnumerateInstances", EnumerateInstances(), nothing),
              intrinsic("EnumerateInstances", ""));
}

TEST(ResponseWriter, PropertyValueIsReturned) {
    const auto body = [](const CIMValue& value) {
        return bodyOf("GetProperty", GetProperty(),
                      [&](ResultSink& sink) { sink.returnValue(value); });
    };
    EXPECT_EQ(body(CIMValue(Uint32(5))), returned("GetProperty", "<VALUE>5</VALUE>\n"));
    EXPECT_EQ(body(CIMValue(CIMTYPE_UINT32, false)), intrinsic("GetProperty", ""));
}

TEST(ResponseWriter, ReturnValueComesBeforeTheParameters) {
    EXPECT_EQ(bodyOf("Frob", InvokeMethod(),
                     [](ResultSink& sink) {
                         sink.outParameter(CIMParamValue("B", CIMValue(String("x"))));
                         sink.returnValue(CIMValue(Uint32(5)));
                         sink.outParameter(CIMParamValue("A", CIMValue(pathOf("v"))));
                     }),
              start +
                  "<METHODRESPONSE NAME=\"Frob\">\n"
                  "<RETURNVALUE PARAMTYPE=\"uint32\">\n<VALUE>5</VALUE>\n</RETURNVALUE>\n"
                  "<PARAMVALUE NAME=\"B\" PARAMTYPE=\"string\">\n<VALUE>x</VALUE>\n</PARAMVALUE>\n"
                  "<PARAMVALUE NAME=\"A\" PARAMTYPE=\"reference\">\n<VALUE.REFERENCE>\n"
                  "<INSTANCEPATH>\n" +
                  namespacePath + instanceName +
                  "</INSTANCEPATH>\n</VALUE.REFERENCE>\n</PARAMVALUE>\n"
                  "</METHODRESPONSE>\n" +
                  end);
}

TEST(ResponseWriter, MethodWithoutReturnValueHasNone) {
    EXPECT_EQ(bodyOf("Frob", InvokeMethod(), nothing),
              start + "<METHODRESPONSE NAME=\"Frob\">\n</METHODRESPONSE>\n" + end);
}

TEST(ResponseWriter, QualifierDeclarationsShowScopeAndFlavor) {
    QualifierDeclaration declaration;
    declaration.name = CIMName("Abstract");
    declaration.value = CIMValue(Boolean(false));
    declaration.scope.onClass = true;
    declaration.scope.onIndication = true;
    declaration.flavor = CIMFlavor(CIMFlavor::OVERRIDABLE);
    EXPECT_EQ(bodyOf("GetQualifier", GetQualifier(),
                     [&](ResultSink& sink) { sink.qualifier(declaration); }),
              returned("GetQualifier", "<QUALIFIER.DECLARATION NAME=\"Abstract\" TYPE=\"boolean\" "
                                       "TOSUBCLASS=\"false\">\n"
                                       "<SCOPE CLASS=\"true\" INDICATION=\"true\"/>"
                                       "<VALUE>FALSE</VALUE>\n</QUALIFIER.DECLARATION>\n"));
}

TEST(ResponseWriter, ClassNamesAreListed) {
    EXPECT_EQ(bodyOf("EnumerateClassNames", EnumerateClassNames(),
                     [](ResultSink& sink) { sink.className(CIMName("C")); }),
              returned("EnumerateClassNames", "<CLASSNAME NAME=\"C\"/>\n"));
}

// Pieces

struct Pieces {
    std::vector<std::string> pieces;
    MessageHead head{"7", "EnumerateInstanceNames", true};
    Operation operation = EnumerateInstanceNames();
    ResponseWriter writer{head, operation,
                          [this](std::string_view piece) { pieces.emplace_back(piece); }};

    void deliver(int count) {
        for (int i = 0; i < count; ++i) {
            writer.instanceName(pathOf("v"));
        }
    }
};

std::string names(int count) {
    std::string text;
    for (int i = 0; i < count; ++i) {
        text += instanceName;
    }
    return text;
}

TEST(ResponseWriterInPieces, FlushesEachHundredResults) {
    Pieces answer;
    answer.deliver(99);
    EXPECT_TRUE(answer.pieces.empty());
    EXPECT_FALSE(answer.writer.flushed());
    answer.deliver(151);
    EXPECT_EQ(answer.pieces.size(), 2U);
    EXPECT_TRUE(answer.writer.flushed());
    EXPECT_EQ(answer.pieces[0] + answer.pieces[1] + answer.writer.finish(),
              returned("EnumerateInstanceNames", names(250)));
}

TEST(ResponseWriterInPieces, ErrorDropsWhatWasNotFlushed) {
    Pieces late;
    late.deliver(230);
    EXPECT_EQ(late.pieces[0] + late.pieces[1] + late.writer.finishAfterError(),
              returned("EnumerateInstanceNames", names(200)));
    Pieces early;
    early.deliver(99);
    EXPECT_EQ(early.writer.finishAfterError(), intrinsic("EnumerateInstanceNames", ""));
}

// Errors

TEST(ErrorBody, NamesTheCode) {
    const MessageHead head{"7", "GetInstance", true};
    EXPECT_EQ(errorBody(head, CIMException(CIM_ERR_NOT_FOUND, "a <\"b\">")),
              start +
                  "<IMETHODRESPONSE NAME=\"GetInstance\">\n"
                  "<ERROR CODE=\"6\" DESCRIPTION=\"CIM_ERR_NOT_FOUND: a &lt;&quot;b&quot;&gt;\"/>"
                  "</IMETHODRESPONSE>\n" +
                  end);
    const MessageHead method{"7", "Frob", false};
    EXPECT_EQ(errorBody(method, CIMException(CIM_ERR_NOT_SUPPORTED)),
              start +
                  "<METHODRESPONSE NAME=\"Frob\">\n"
                  "<ERROR CODE=\"7\" DESCRIPTION=\"CIM_ERR_NOT_SUPPORTED\"/></METHODRESPONSE>\n" +
                  end);
}

TEST(ErrorDescription, ShowsAnUnknownCode) {
    EXPECT_EQ(errorDescription(CIMException(CIMStatusCode(31), "X")),
              "Unrecognized CIM status code \"31\": X");
}

TEST(MessageHead, IsEscaped) {
    const MessageHead head{"a<b& \"c", "M&", true};
    const std::string body = errorBody(head, CIMException(CIM_ERR_FAILED));
    EXPECT_NE(body.find("ID=\"a&lt;b&amp; &quot;c\""), std::string::npos) << body;
    EXPECT_NE(body.find("NAME=\"M&amp;\""), std::string::npos) << body;
}

// Pulled results

TEST(PulledResults, AreFollowedByTheirState) {
    EXPECT_EQ(bodyOf("PullInstancePaths", PullEnumeration(),
                     [](ResultSink& sink) {
                         sink.instancePath(pathOf("v"));
                         sink.outParameter(
                             CIMParamValue("EndOfSequence", CIMValue(Boolean(true)), false));
                         sink.outParameter(
                             CIMParamValue("EnumerationContext", CIMValue(String()), false));
                     }),
              intrinsic("PullInstancePaths",
                        "<IRETURNVALUE>\n"
                        "<INSTANCEPATH>\n" +
                            namespacePath + instanceName +
                            "</INSTANCEPATH>\n</IRETURNVALUE>\n"
                            "<PARAMVALUE NAME=\"EndOfSequence\">\n<VALUE>TRUE</VALUE>\n"
                            "</PARAMVALUE>\n"
                            "<PARAMVALUE NAME=\"EnumerationContext\">\n<VALUE></VALUE>\n"
                            "</PARAMVALUE>\n"));
}

TEST(PulledResults, ShowNeitherQualifiersNorUnwantedOrigins) {
    const auto deliver = [](ResultSink& sink) {
        sink.instanceWithPath(pathOf("v"), richInstance());
    };
    const std::string plain = bodyOf("PullInstancesWithPath", PullEnumeration(), deliver);
    EXPECT_EQ(plain.find("QUALIFIER"), std::string::npos);
    EXPECT_EQ(plain.find("CLASSORIGIN"), std::string::npos);
    const std::string withOrigins =
        bodyOf("PullInstancesWithPath", PullEnumeration(), [&](ResultSink& sink) {
            sink.includeClassOrigin();
            deliver(sink);
        });
    EXPECT_NE(withOrigins.find("CLASSORIGIN=\"B\""), std::string::npos);
    EXPECT_NE(withOrigins.find("<VALUE.INSTANCEWITHPATH>\n<INSTANCEPATH>"), std::string::npos);
}

TEST(ResponseWriter, HoldsMemoryForALongBodyThatGoesOutWhole) {
    const MessageHead head{"1", "EnumerateInstanceNames", true};
    const Operation operation = EnumerateInstanceNames();
    const CIMObjectPath path("", CIMNamespaceName(), CIMName("C"));
    MemoryBudget budget(2'000'000);
    MemoryBudget::Reservation memory(budget, "");
    ResponseWriter writer(head, operation, nullptr, &memory);
    const auto deliver = [&](int count) {
        for (int i = 0; i < count; ++i) {
            writer.instanceName(path); // some 45 bytes
        }
    };
    deliver(1000);
    EXPECT_EQ(budget.used(), 0U);
    deliver(9000);
    EXPECT_GT(budget.used(), 450'000U);
    try {
        deliver(100'000);
        FAIL() << "not refused";
    } catch (const CIMException& error) {
        EXPECT_EQ(error.getCode(), CIM_ERR_SERVER_LIMITS_EXCEEDED);
    }
    EXPECT_LE(memory.bytes(), 2'000'000U);
}

} // namespace
} // namespace smisd::test
