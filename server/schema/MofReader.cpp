#include "server/schema/MofReader.h"

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

#include <Pegasus/Common/Exception.h>

#include "server/operation/Utf8.h"
#include "server/schema/MofClass.h"
#include "server/schema/MofQualifier.h"
#include "server/schema/MofTree.h"
#include "server/schema/MofValue.h"

using namespace Pegasus;

namespace smisd {
namespace {

using mof::Node;

class Reader {
public:
    explicit Reader(Repository& repository) : _repository(repository) {}

    void read(const std::filesystem::path& file, CIMNamespaceName nameSpace) {
        const std::string fileName = file.string();
        const std::string text = contentOf(file);
        const auto tree = mof::parse(text, fileName);
        _open.push_back(file.lexically_normal());
        for (const auto& child : tree->children) {
            take(*child, nameSpace);
        }
        _open.pop_back();
    }

private:
    static std::string contentOf(const std::filesystem::path& file) {
        std::ifstream stream(file, std::ios::binary);
        std::string text((std::istreambuf_iterator<char>(stream)),
                         std::istreambuf_iterator<char>());
        if (!stream.is_open() || stream.bad()) {
            throw MofError(file.string(), 1, 1,
                           std::string("expected a file that can be read: ") +
                               std::strerror(errno));
        }
        return text;
    }

    void take(const Node& node, CIMNamespaceName& nameSpace) {
        try {
            if (node.is_type<mof::Pragma>()) {
                obey(node, nameSpace);
            } else {
                declare(node, _repository.open(nameSpace));
            }
        } catch (const Exception& error) { // what the CIM types refuse
            mof::fail(node, toUtf8(error.getMessage()));
        }
    }

    static void declare(const Node& node, Schema& schema) {
        if (node.is_type<mof::QualifierDeclaration>()) {
            declareQualifier(node, schema);
        } else if (mof::find<mof::ClassBody>(node)) {
            schema.declare(mof::compileClass(node, schema));
        } else {
            schema.add(mof::compileInstance(node, schema));
        }
    }

    static void declareQualifier(const Node& node, Schema& schema) {
        const QualifierDeclaration declaration = mof::compileQualifierDeclaration(node);
        const Node& name = mof::get<mof::QualifierName>(node);
        if (schema.findQualifier(declaration.name)) {
            mof::fail(name,
                      "expected the qualifier " + mof::word(name) + " to be declared only once");
        }
        schema.declare(declaration);
    }

    void obey(const Node& pragma, CIMNamespaceName& nameSpace) {
        const std::string word = mof::word(mof::get<mof::PragmaName>(pragma));
        const Node& value = mof::get<mof::StringValue>(pragma);
        const String text = mof::textOf(value);
        if (word == "include") {
            include(value, toUtf8(text), nameSpace);
        } else if (word == "namespace") {
            nameSpace = namespaceOf(value, text);
        }
    }

    static CIMNamespaceName namespaceOf(const Node& value, const String& text) {
        if (!CIMNamespaceName::legal(text)) {
            mof::fail(value, "expected the name of a namespace");
        }
        return CIMNamespaceName(text);
    }

    void include(const Node& value, const std::string& name, const CIMNamespaceName& nameSpace) {
        const auto file = (_open.back().parent_path() / name).lexically_normal();
        if (std::find(_open.begin(), _open.end(), file) != _open.end()) {
            mof::fail(value, "expected a file that does not include itself, not " + name);
        }
        if (!std::filesystem::is_regular_file(file)) {
            mof::fail(value, "expected the name of a file that can be read, not " + name);
        }
        read(file, nameSpace);
    }

    Repository& _repository;
    std::vector<std::filesystem::path> _open; // the file being read, behind those that include it
};

} // namespace

void readMof(const std::filesystem::path& file, const CIMNamespaceName& nameSpace,
             Repository& repository) {
    Reader(repository).read(file, nameSpace);
}

void readMofDirectory(const std::filesystem::path& directory, Repository& repository) {
    const CIMNamespaceName elements(elementNamespace);
    const CIMNamespaceName interop(interopNamespace);
    readMof(directory / "access-schema.mof", elements, repository);
    readMof(directory / "interop-schema.mof", interop, repository);
    readMof(directory / "interop-instances.mof", interop, repository);
    // A copy shares the declarations.
    for (const char* name : otherInteropNamespaces) {
        repository.open(CIMNamespaceName(name)) = repository.open(interop);
    }
    readMof(directory / "access-registration.mof", interop, repository);
}

} // namespace smisd
