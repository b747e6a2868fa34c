#pragma once

#include <Pegasus/Common/CIMStatusCode.h>
#include <Pegasus/Common/String.h>

namespace Pegasus {

// The root of what the library throws. Not a std::exception.
class PEGASUS_COMMON_LINKAGE Exception {
public:
    Exception(const String& message);
    Exception(const Exception& exception);
    Exception& operator=(const Exception& exception);
    virtual ~Exception();
    virtual const String& getMessage() const;

protected:
    Exception();

private:
    String _message;
};

class PEGASUS_COMMON_LINKAGE IndexOutOfBoundsException : public Exception {
public:
    IndexOutOfBoundsException();
};

class PEGASUS_COMMON_LINKAGE AlreadyExistsException : public Exception {
public:
    AlreadyExistsException(const String& message);
};

class PEGASUS_COMMON_LINKAGE InvalidNameException : public Exception {
public:
    InvalidNameException(const String& name);
};

class PEGASUS_COMMON_LINKAGE InvalidNamespaceNameException : public Exception {
public:
    InvalidNamespaceNameException(const String& name);
};

class PEGASUS_COMMON_LINKAGE UninitializedObjectException : public Exception {
public:
    UninitializedObjectException();
};

class PEGASUS_COMMON_LINKAGE TypeMismatchException : public Exception {
public:
    TypeMismatchException();
    TypeMismatchException(const String& message);
};

class PEGASUS_COMMON_LINKAGE DynamicCastFailedException : public Exception {
public:
    DynamicCastFailedException();
};

class PEGASUS_COMMON_LINKAGE InvalidDateTimeFormatException : public Exception {
public:
    InvalidDateTimeFormatException();
};

class PEGASUS_COMMON_LINKAGE DateTimeOutOfRangeException : public Exception {
public:
    DateTimeOutOfRangeException(const String& message);
};

class PEGASUS_COMMON_LINKAGE MalformedObjectNameException : public Exception {
public:
    MalformedObjectNameException(const String& objectName);
};

class PEGASUS_COMMON_LINKAGE BindFailedException : public Exception {
public:
    BindFailedException(const String& message);
};

class PEGASUS_COMMON_LINKAGE InvalidLocatorException : public Exception {
public:
    InvalidLocatorException(const String& locator);
};

class PEGASUS_COMMON_LINKAGE CannotCreateSocketException : public Exception {
public:
    CannotCreateSocketException();
};

class PEGASUS_COMMON_LINKAGE CannotConnectException : public Exception {
public:
    CannotConnectException(const String& message);
};

class PEGASUS_COMMON_LINKAGE AlreadyConnectedException : public Exception {
public:
    AlreadyConnectedException();
};

class PEGASUS_COMMON_LINKAGE NotConnectedException : public Exception {
public:
    NotConnectedException();
};

class PEGASUS_COMMON_LINKAGE ConnectionTimeoutException : public Exception {
public:
    ConnectionTimeoutException();
};

class PEGASUS_COMMON_LINKAGE SSLException : public Exception {
public:
    SSLException(const String& message);
};

// A failed CIM operation. The message is the constructor's text and nothing else; the name of the
// code is added where the error goes on the wire.
class PEGASUS_COMMON_LINKAGE CIMException : public Exception {
public:
    CIMException(CIMStatusCode code = CIM_ERR_SUCCESS, const String& message = String::EMPTY);
    CIMException(const CIMException& exception);
    CIMException& operator=(const CIMException& exception);
    ~CIMException() override;
    CIMStatusCode getCode() const;

private:
    CIMStatusCode _code;
};

} // namespace Pegasus
