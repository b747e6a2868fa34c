// access-register against stand-ins for the server's programs, which note how they are called.
#include <filesystem>
#include <fstream>
#include <sstream>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/server/TemporaryDirectory.h"
#include "tests/wire/support/Process.h"

using testing::ContainsRegex;
using testing::HasSubstr;
using testing::Not;

namespace fs = std::filesystem;

namespace {

class AccessRegister : public testing::Test {
protected:
    AccessRegister() {
        fs::create_directories(home() / "bin");
        fs::create_directories(home() / "lib");
        std::ofstream(home() / "lib/libAccessProviders.so") << "";
        program("cimmof", "");
        program("cimprovider",
                "case $* in '-l -m AccessProvidersModule') [ -e registered ];; esac");
        program("cimconfig", "echo Current value: lib");
        program("cimcli", "case $* in 'nc '*) [ -e classes ] && cat classes;; esac");
    }

    fs::path home() const { return _directory.path; }

    void program(const std::string& name, const std::string& body) const {
        const fs::path file = home() / "bin" / name;
        std::ofstream(file) << "#!/bin/bash\ncd " << home().string() << "\necho " << name
                            << " $* >>calls\n"
                            << body << '\n';
        fs::permissions(file, fs::perms::owner_all);
    }

    void file(const std::string& name, const std::string& content) const {
        std::ofstream(home() / name) << content;
    }

    wire::Result run(const std::string& option = "") const {
        // An OpenPegasus of this machine must not lend its programs.
        std::vector<std::string> arguments = {"env", "PATH=/usr/bin:/bin",
                                              "PEGASUS_HOME=" + home().string(), ACCESS_REGISTER};
        if (!option.empty()) {
            arguments.push_back(option);
        }
        return wire::run(arguments, "");
    }

    std::string calls() const {
        std::ostringstream text;
        text << std::ifstream(home() / "calls").rdbuf();
        return text.str();
    }

private:
    smisd::test::TemporaryDirectory _directory;
};

TEST_F(AccessRegister, LoadsTheClassesBeforeTheRegistration) {
    const wire::Result result = run();
    EXPECT_EQ(result.status, 0) << result.err;
    EXPECT_THAT(calls(), ContainsRegex("-n root/snia [^\n]*/access-schema.mof\n(.*\n)*"
                                       "cimmof [^\n]*-n root/PG_InterOp [^\n]*/"
                                       "access-registration.mof\n"));
}

TEST_F(AccessRegister, FindsTheInteropNamespace) {
    program("cimcli", "[ \"$*\" = 'gc -n root/interop PG_ProviderModule' ]");
    EXPECT_EQ(run().status, 0);
    EXPECT_THAT(calls(), ContainsRegex("cimmof [^\n]*-n root/interop "));
}

TEST_F(AccessRegister, ReplacesARegistration) {
    file("registered", "");
    EXPECT_EQ(run().status, 0);
    EXPECT_THAT(calls(), ContainsRegex("cimprovider -r -m AccessProvidersModule\n(.*\n)*cimmof "));
}

TEST_F(AccessRegister, RemovesClassesBeforeThoseTheyDeriveFrom) {
    file("registered", "");
    file("classes", "CIM_ManagedElement\nCIM_Identity\nCIM_StorageHardwareID\n");
    const wire::Result result = run("--remove");
    EXPECT_EQ(result.status, 0) << result.err;
    EXPECT_THAT(calls(), HasSubstr("cimcli dc -n root/snia CIM_StorageHardwareID\n"
                                   "cimcli dc -n root/snia CIM_Identity\n"
                                   "cimcli dc -n root/snia CIM_ManagedElement\n"));
    EXPECT_THAT(calls(), HasSubstr("cimcli di -n root __Namespace.Name=\"snia\""));
}

TEST_F(AccessRegister, LeavesANamespaceWithOthersClassesAlone) {
    file("classes", "CIM_ManagedElement\nCIM_OfOthers\n");
    const wire::Result result = run("--remove");
    EXPECT_EQ(result.status, 0);
    EXPECT_THAT(result.out, HasSubstr("root/snia holds classes of others too"));
    EXPECT_THAT(calls(), Not(HasSubstr("cimcli dc ")));
    EXPECT_THAT(calls(), Not(HasSubstr("cimcli di ")));
}

struct Refusal {
    std::string name;
    std::string program;
    std::string body;
    std::string expected;
};

class AccessRegisterRefusal : public AccessRegister, public testing::WithParamInterface<Refusal> {};

TEST_P(AccessRegisterRefusal, SaysWhatToDo) {
    program(GetParam().program, GetParam().body);
    const wire::Result result = run();
    EXPECT_EQ(result.status, 1);
    EXPECT_THAT(result.err, HasSubstr(GetParam().expected));
    EXPECT_THAT(result.out, Not(HasSubstr("registered")));
}

INSTANTIATE_TEST_SUITE_P(
    , AccessRegisterRefusal,
    testing::Values(
        Refusal{"NoServer", "cimprovider", "echo not running; exit 1",
                "no CIM server answers on this machine: start it (cimserver), then run this again. "
                "It said: not running"},
        Refusal{"NoLibrary", "cimconfig", "echo Current value: /elsewhere",
                "libAccessProviders.so is in none of the server's provider directories "
                "(/elsewhere): link it there"},
        Refusal{"NoInterop", "cimcli", "exit 3", "holds PG_ProviderModule"},
        Refusal{"BadClasses", "cimmof", "echo no >&2; exit 1",
                "no\naccess-register: the server does not take"}),
    [](const testing::TestParamInfo<Refusal>& parameter) { return parameter.param.name; });

TEST_F(AccessRegister, NamesTheProgramThatIsMissing) {
    fs::remove(home() / "bin/cimcli");
    const wire::Result result = run();
    EXPECT_EQ(result.status, 1);
    EXPECT_THAT(result.err, HasSubstr("cimcli is neither in PATH nor in $PEGASUS_HOME/bin"));
    EXPECT_EQ(calls(), "");
}

TEST_F(AccessRegister, RefusesUnknownOptions) {
    EXPECT_EQ(run("--interop").status, 2);
    EXPECT_EQ(calls(), "");
}

} // namespace
