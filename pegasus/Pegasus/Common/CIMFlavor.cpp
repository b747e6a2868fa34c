#include <Pegasus/Common/CIMFlavor.h>

namespace Pegasus {

namespace {
enum Bits : Uint32 {
    overridable = 1,
    toSubclass = 2,
    toInstance = 4,
    translatable = 8,
    disableOverride = 16,
    restricted = 32
};
}

constinit const CIMFlavor CIMFlavor::NONE(0);
constinit const CIMFlavor CIMFlavor::OVERRIDABLE(overridable);
constinit const CIMFlavor CIMFlavor::ENABLEOVERRIDE(overridable);
constinit const CIMFlavor CIMFlavor::DISABLEOVERRIDE(disableOverride);
constinit const CIMFlavor CIMFlavor::TOSUBCLASS(toSubclass);
constinit const CIMFlavor CIMFlavor::RESTRICTED(restricted);
constinit const CIMFlavor CIMFlavor::TOINSTANCE(toInstance);
constinit const CIMFlavor CIMFlavor::TRANSLATABLE(translatable);
constinit const CIMFlavor CIMFlavor::DEFAULTS(overridable | toSubclass);
constinit const CIMFlavor CIMFlavor::TOSUBELEMENTS(toSubclass);

String CIMFlavor::toString() const {
    static const struct {
        Uint32 bit;
        const char* word;
    } words[] = {{overridable, "OVERRIDABLE"},         {toSubclass, "TOSUBCLASS"},
                 {toInstance, "TOINSTANCE"},           {translatable, "TRANSLATABLE"},
                 {disableOverride, "DISABLEOVERRIDE"}, {restricted, "RESTRICTED"}};
    String text;
    for (const auto& entry : words) {
        if (!(_bits & entry.bit)) {
            continue;
        }
        if (text.size() != 0) {
            text.append(" ");
        }
        text.append(entry.word);
    }
    return text;
}

} // namespace Pegasus
