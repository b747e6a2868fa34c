#include "server/module/ProviderErrors.h"

#include <exception>

using namespace Pegasus;

namespace smisd {

CIMException currentProviderError() {
    try {
        throw;
    } catch (const CIMException& error) {
        return CIMException(error.getCode(), error.getMessage());
    } catch (const Exception& error) {
        return CIMException(CIM_ERR_FAILED, error.getMessage());
    } catch (const std::exception& error) {
        return CIMException(CIM_ERR_FAILED, String(error.what()));
    } catch (...) {
        return CIMException(CIM_ERR_FAILED, String("Unknown error."));
    }
}

} // namespace smisd
