"""CIM-XML requests in the namespace root/snia."""

from xml.sax.saxutils import escape

NAMESPACE = "root/snia"
_PATH = (
    "<LOCALNAMESPACEPATH>"
    + "".join(f'<NAMESPACE NAME="{part}"/>' for part in NAMESPACE.split("/"))
    + "</LOCALNAMESPACEPATH>"
)


def value(text):
    return f"<VALUE>{escape(str(text))}</VALUE>"


def values(*texts):
    return "<VALUE.ARRAY>" + "".join(value(text) for text in texts) + "</VALUE.ARRAY>"


def class_name(name):
    return f'<CLASSNAME NAME="{name}"/>'


def instance_name(name, **keys):
    """Of text keys."""
    bindings = "".join(
        f'<KEYBINDING NAME="{key}"><KEYVALUE VALUETYPE="string">{escape(text)}</KEYVALUE></KEYBINDING>'
        for key, text in keys.items()
    )
    return f'<INSTANCENAME CLASSNAME="{name}">{bindings}</INSTANCENAME>'


def reference(path):
    return f"<VALUE.REFERENCE>{path}</VALUE.REFERENCE>"


def references(*paths):
    return "<VALUE.REFARRAY>" + "".join(reference(path) for path in paths) + "</VALUE.REFARRAY>"


def _post(method, target, call, headers=()):
    body = (
        '<?xml version="1.0" encoding="utf-8" ?>\n'
        '<CIM CIMVERSION="2.0" DTDVERSION="2.0"><MESSAGE ID="1001" PROTOCOLVERSION="1.0">'
        f"<SIMPLEREQ>{call}</SIMPLEREQ></MESSAGE></CIM>\n"
    ).encode()
    head = [
        "POST /cimom HTTP/1.1",
        "Host: localhost",
        "Content-Type: application/xml; charset=utf-8",
        "CIMOperation: MethodCall",
        f"CIMMethod: {method}",
        f"CIMObject: {target}",
        f"Content-Length: {len(body)}",
        *headers,
    ]
    return ("\r\n".join(head) + "\r\n\r\n").encode() + body


def intrinsic(method, headers=(), **parameters):
    """Parameters are XML, or True and False; those that are None are left out."""
    text = ""
    for name, given in parameters.items():
        if isinstance(given, bool):
            given = value("TRUE" if given else "FALSE")
        if given is not None:
            text += f'<IPARAMVALUE NAME="{name}">{given}</IPARAMVALUE>'
    call = f'<IMETHODCALL NAME="{method}">{_PATH}{text}</IMETHODCALL>'
    return _post(method, NAMESPACE, call, headers)


def extrinsic(class_, method, headers=(), **parameters):
    """A method of the class, not of one instance. Parameters are pairs of type and XML."""
    text = ""
    for name, (type_, given) in parameters.items():
        paramtype = f' PARAMTYPE="{type_}"' if type_ else ""
        text += f'<PARAMVALUE NAME="{name}"{paramtype}>{given}</PARAMVALUE>'
    path = f"<LOCALCLASSPATH>{_PATH}{class_name(class_)}</LOCALCLASSPATH>"
    call = f'<METHODCALL NAME="{method}">{path}{text}</METHODCALL>'
    return _post(method, f"{NAMESPACE}:{class_}", call, headers)


def recorded(text):
    """A request of tests/wire/pairs as it goes over the wire: the headers of the connection added."""
    head, end, body = text.partition(b"\n\n")
    if not end:
        return text  # no HTTP at all
    head += b"\n"
    if b"\nHost:" not in head:
        head += b"Host: localhost\n"
    if b"\nContent-Length:" not in head and b"\nTransfer-Encoding:" not in head:
        head += b"Content-Length: %d\n" % len(body)
    head = head.replace(b"Content-Length: none\n", b"")
    return head.replace(b"\n", b"\r\n") + b"\r\n" + body
