#include "server/cimxml/RequestDecoder.h"

#include "server/operation/Utf8.h"
#include "tests/server/cimxml/Requests.h"

using namespace Pegasus;

namespace smisd::test {
namespace {

const CimHeaders enumerate{"EnumerateQualifiers", "root/test"};

std::string replaced(std::string text, const std::string& from, const std::string& to) {
    const size_t at = text.find(from);
    EXPECT_NE(at, std::string::npos);
    return text.replace(at, from.size(), to);
}

std::string refusal(const std::string& body, const CimHeaders& headers = enumerate) {
    return refusalOf([&] { decodeRequest(body, headers); });
}

std::string goodBody() {
    return intrinsicCall("EnumerateQualifiers", "");
}

std::string methodCall(const std::string& path, const std::string& parameters) {
    return message("<METHODCALL NAME=\"Frob\">" + path + parameters + "</METHODCALL>");
}

const std::string localInstancePath =
    R"(<LOCALINSTANCEPATH><LOCALNAMESPACEPATH><NAMESPACE NAME="root"/></LOCALNAMESPACEPATH>)"
    R"(<INSTANCENAME CLASSNAME="C"><KEYBINDING NAME="k"><KEYVALUE>v</KEYVALUE></KEYBINDING>)"
    "</INSTANCENAME></LOCALINSTANCEPATH>";
const std::string localClassPath =
    R"(<LOCALCLASSPATH><LOCALNAMESPACEPATH><NAMESPACE NAME="root"/></LOCALNAMESPACEPATH>)"
    R"(<CLASSNAME NAME="C"/></LOCALCLASSPATH>)";

TEST(DecodeRequest, HeadRepeatsIdAndMethod) {
    const DecodedRequest request = decodeRequest(replaced(goodBody(), "1001", "a&lt;b"), enumerate);
    EXPECT_EQ(request.head.messageId, "a<b");
    EXPECT_EQ(request.head.methodName, "EnumerateQualifiers");
    EXPECT_TRUE(request.head.intrinsic);
    EXPECT_TRUE(std::holds_alternative<Operation>(request.operation));
}

TEST(DecodeRequest, VersionsAreAcceptedByTheirMajorNumber) {
    EXPECT_EQ(refusal(replaced(goodBody(), "CIMVERSION=\"2.0\"", "CIMVERSION=\"2.3\"")),
              "no refusal");
    EXPECT_EQ(refusal(replaced(goodBody(), "CIMVERSION=\"2.0\"", "CIMVERSION=\"3.0\"")),
              "501 unsupported-cim-version: CIM version \"3.0\" is not supported.");
    EXPECT_EQ(refusal(replaced(goodBody(), "DTDVERSION=\"2.0\"", "DTDVERSION=\"3.0\"")),
              "501 unsupported-dtd-version: DTD version \"3.0\" is not supported.");
    EXPECT_EQ(refusal(replaced(goodBody(), "DTDVERSION=\"2.0\"", "DTDVERSION=\"2.\"")),
              "501 unsupported-dtd-version: DTD version \"2.\" is not supported.");
}

TEST(DecodeRequest, ProtocolVersionMustAgreeWithTheHeader) {
    const std::string body11 =
        replaced(goodBody(), "PROTOCOLVERSION=\"1.0\"", "PROTOCOLVERSION=\"1.1\"");
    EXPECT_EQ(refusal(body11, {"EnumerateQualifiers", "root/test", "1.1"}), "no refusal");
    EXPECT_EQ(refusal(body11), "400 header-mismatch: CIMProtocolVersion value \"1.0\" does not "
                               "match CIM request protocol version \"1.1\".");
    EXPECT_EQ(refusal(replaced(goodBody(), "PROTOCOLVERSION=\"1.0\"", "PROTOCOLVERSION=\"2.0\""),
                      {"EnumerateQualifiers", "root/test", "2.0"}),
              "501 unsupported-protocol-version: CIMProtocolVersion \"2.0\" is not supported.");
}

TEST(DecodeRequest, MissingAttributesAndElementsAreNamed) {
    const std::string prefix = "400 request-not-valid: Validation error: on line 1: ";
    EXPECT_EQ(refusal(replaced(goodBody(), " CIMVERSION=\"2.0\"", "")),
              prefix + "missing CIM.CIMVERSION attribute");
    EXPECT_EQ(refusal(replaced(goodBody(), " ID=\"1001\"", "")),
              prefix + "Invalid or missing MESSAGE.ID attribute");
    EXPECT_EQ(refusal(replaced(goodBody(), " PROTOCOLVERSION=\"1.0\"", "")),
              prefix + "Invalid or missing MESSAGE.PROTOCOLVERSION attribute");
    EXPECT_EQ(refusal(declaration + R"(<CIM CIMVERSION="2.0" DTDVERSION="2.0"/>)"),
              prefix + "expected MESSAGE element");
    EXPECT_EQ(refusal(declaration + "<html/>"), prefix + "Expected open of CIM element");
    EXPECT_EQ(refusal(message("")), prefix + "expected IMETHODCALL or METHODCALL element");
    EXPECT_EQ(refusal(message("<IMETHODCALL/>")), prefix + "Missing IMETHODCALL.NAME attribute");
    EXPECT_EQ(refusal(message(R"(<IMETHODCALL NAME="EnumerateQualifiers"/>)")),
              prefix + "expected LOCALNAMESPACEPATH element");
    EXPECT_EQ(refusal(replaced(goodBody(), "</SIMPLEREQ>", "<IMETHODCALL/></SIMPLEREQ>")),
              prefix + "Expected close of SIMPLEREQ element, got IMETHODCALL instead");
}

TEST(DecodeRequest, HeadersMustAgreeWithTheBody) {
    EXPECT_EQ(refusal(goodBody(), {"", "root/test"}),
              "400 header-mismatch: Missing CIMMethod HTTP header.");
    EXPECT_EQ(refusal(goodBody(), {"enumeratequalifiers", "ROOT/Test"}), "no refusal");
    EXPECT_EQ(refusal(goodBody(), {"GetClass", "root/test"}),
              "400 header-mismatch: CIMMethod value \"GetClass\" does not match CIM request method "
              "\"EnumerateQualifiers\".");
    EXPECT_EQ(refusal(goodBody(), {"EnumerateQualifiers", ""}),
              "400 header-mismatch: Missing CIMObject HTTP header.");
    EXPECT_EQ(refusal(goodBody(), {"EnumerateQualifiers", "/root/test"}),
              "400 header-mismatch: CIMObject value \"/root/test\" does not match CIM request "
              "object \"root/test\".");
}

TEST(DecodeRequest, SeveralRequestsInOneNeedAHeader) {
    EXPECT_EQ(refusal(declaration + R"(<CIM CIMVERSION="2.0" DTDVERSION="2.0"><MESSAGE ID="1" )"
                                    R"(PROTOCOLVERSION="1.0"><MULTIREQ/></MESSAGE></CIM>)"),
              "400 header-mismatch: Multi-request is missing CIMBatch HTTP header");
}

TEST(DecodeRequest, MethodOfAnInstance) {
    const DecodedRequest request = decodeRequest(
        methodCall(localInstancePath, R"(<PARAMVALUE NAME="P" PARAMTYPE="uint32"><VALUE>7</VALUE>)"
                                      R"(</PARAMVALUE><PARAMVALUE NAME="Q"><VALUE>x</VALUE>)"
                                      "</PARAMVALUE>"),
        {"Frob", R"(root:C.k="v")"});
    EXPECT_FALSE(request.head.intrinsic);
    const auto call = operationOf<InvokeMethod>(request);
    EXPECT_EQ(toUtf8(call.nameSpace.getString()), "root");
    EXPECT_EQ(toUtf8(call.objectName.toString()), R"(C.k="v")");
    EXPECT_EQ(toUtf8(call.methodName.getString()), "Frob");
    ASSERT_EQ(call.inParameters.size(), 2U);
    EXPECT_EQ(toUtf8(call.inParameters[0].getParameterName()), "P");
    EXPECT_TRUE(call.inParameters[0].isTyped());
    EXPECT_FALSE(call.inParameters[1].isTyped());
}

TEST(DecodeRequest, MethodOfAClass) {
    const auto call = operationOf<InvokeMethod>(
        decodeRequest(methodCall(localClassPath, ""), {"Frob", "root:c"}));
    EXPECT_EQ(toUtf8(call.objectName.toString()), "C");
}

TEST(DecodeRequest, MethodHeadersMustAgreeWithTheBody) {
    EXPECT_EQ(refusal(methodCall(localClassPath, ""), {"frob", "root:C"}),
              "400 header-mismatch: CIMMethod value \"frob\" does not match CIM request method "
              "\"Frob\".");
    EXPECT_EQ(refusal(methodCall(localClassPath, ""), {"Frob", ""}),
              "400 header-mismatch: Missing CIMObject HTTP header.");
    EXPECT_EQ(refusal(methodCall(localClassPath, ""), {"Frob", "a:b:c"}),
              "400 header-mismatch: Could not parse CIMObject value \"a:b:c\".");
    EXPECT_EQ(refusal(methodCall(localInstancePath, ""), {"Frob", "root:C.k=\"w\""}),
              "400 header-mismatch: CIMObject value \"root:C.k=\"w\"\" does not match CIM request "
              "object \"root:C.k=\"v\"\".");
}

TEST(DecodeRequest, MethodNeedsAnObject) {
    EXPECT_EQ(refusal(methodCall("", ""), {"Frob", "root:C"}),
              "400 request-not-valid: Validation error: on line 1: Expected LOCALINSTANCEPATH or "
              "LOCALCLASSPATH element");
}

TEST(DecodeRequest, TwoParametersOfOneNameAreLeftToTheMethod) {
    const std::string twice = R"(<PARAMVALUE NAME="P"><VALUE>x</VALUE></PARAMVALUE>)"
                              R"(<PARAMVALUE NAME="P"><VALUE>y</VALUE></PARAMVALUE>)";
    EXPECT_EQ(operationOf<InvokeMethod>(
                  decodeRequest(methodCall(localClassPath, twice), {"Frob", "root:C"}))
                  .inParameters.size(),
              2U);
}

// A body of many empty elements: they take many times the memory of their text.
std::string wideBody() {
    std::string values;
    for (int i = 0; i < 1000; ++i) {
        values += "<VALUE/>";
    }
    return intrinsicCall("EnumerateInstances",
                         R"(<IPARAMVALUE NAME="ClassName"><CLASSNAME NAME="C"/></IPARAMVALUE>)"
                         R"(<IPARAMVALUE NAME="PropertyList"><VALUE.ARRAY>)" +
                             values + "</VALUE.ARRAY></IPARAMVALUE>");
}

TEST(DecodedRequest, HoldsMemoryForWhatIsInIt) {
    MemoryBudget budget(10'000'000);
    {
        const DecodedRequest request =
            decodeRequest(wideBody(), {"EnumerateInstances", "root/test"}, usualDepth,
                          MemoryBudget::Reservation(budget, "alice"));
        EXPECT_GT(budget.used(), 100'000U);
        EXPECT_LT(budget.used(), 1'000'000U);
    }
    EXPECT_EQ(budget.used(), 0U);
}

unsigned statusWith(MemoryBudget& budget) {
    try {
        decodeRequest(wideBody(), {"EnumerateInstances", "root/test"}, usualDepth,
                      MemoryBudget::Reservation(budget, "alice"));
    } catch (const BadRequest& refused) {
        return refused.status();
    }
    return 200;
}

TEST(DecodedRequest, IsRefusedForWantOfMemory) {
    MemoryBudget small(100'000);
    EXPECT_EQ(statusWith(small), 413U) << "it will never have enough";
    MemoryBudget large(2'000'000);
    EXPECT_EQ(statusWith(large), 200U);
    MemoryBudget::Reservation others(large, "bob");
    MemoryBudget::Reservation more(large, "carol");
    EXPECT_TRUE(others.resize(1'000'000));
    EXPECT_TRUE(more.resize(900'000));
    EXPECT_EQ(statusWith(large), 503U) << "there is none just now";
    EXPECT_EQ(large.used(), 1'900'000U);
}

} // namespace
} // namespace smisd::test
