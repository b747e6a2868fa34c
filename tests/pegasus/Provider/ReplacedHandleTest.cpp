// A program may put its own definition of a call in the place of the library's, which is how the
// providers' tests answer CIMOMHandle::getInstance.

#include <Pegasus/Provider/CIMOMHandle.h>
#include <gtest/gtest.h>

namespace Pegasus {

CIMInstance CIMOMHandle::getInstance(const OperationContext&, const CIMNamespaceName&,
                                     const CIMObjectPath& instanceName, Boolean, Boolean, Boolean,
                                     const CIMPropertyList&) {
    CIMInstance instance(instanceName.getClassName());
    instance.setPath(instanceName);
    return instance;
}

} // namespace Pegasus

using namespace Pegasus;

TEST(ReplacedHandle, AnswersInsteadOfTheLibrary) {
    CIMOMHandle handle;
    const CIMInstance instance =
        handle.getInstance(OperationContext(), CIMNamespaceName("root"), CIMObjectPath("C.k=1"),
                           false, false, false, CIMPropertyList());
    EXPECT_EQ(instance.getPath().toString(), "C.k=1");
}
