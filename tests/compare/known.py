"""Differences that stay, each with its reason; docs/openpegasus.md tells them."""

import re

# Requests that OpenPegasus 2.14 does not live through, and that therefore are not asked.
NOT_ASKED = {
    "pair BadXmlDeepReferences": "references nested in references keep a thread busy for ever",
    **{f"pair {name}": "several requests at once: only the first answer would be compared"
       for name in ("Pipelined", "PipelinedWithEmptyLines", "BadHttpPipelinedBadFirst",
                    "BadHttpPipelinedEndsBadly", "BadHttpPipelinedSmuggled")},
    "pair BadHeaderNoLength": "without Content-Length it waits until the client goes",
}

# Requests that OpenPegasus takes, answers with another error, or answers not at all, where smisd
# refuses them: tests/wire/pairs has each with smisd's answer.
STRICTER = (
    "HeaderBlankBeforeColon", "HeaderChunkedAndLength", "HeaderControl", "HeaderHuge",
    "HeaderLengthAndChunked", "HeaderLengthPlus", "HeaderLengthSign", "HeaderNoColon",
    "HeaderNoName", "HttpChunkHuge", "HttpLineFeeds", "HttpNoTarget", "HttpOptions", "HttpPut",
    "HttpTlsHello", "HttpTwoBlanks", "HttpVersion2", "HttpVersion3", "HttpVersionNone",
    "HttpVersionText", "InstanceNewNothing", "XmlCharacterZero", "XmlZeroes",
)

# Pattern of the request's name, pattern of the differing lines, reason.
KNOWN = (
    (r"", r"\A@@[^\n]*\n *IMETHODRESPONSE[^\n]*\n-        IRETURNVALUE\Z",
     "an empty list from several providers: OpenPegasus sends an empty IRETURNVALUE, smisd none"),
    (r" in chunks$", r"-cimstatuscodedescription: [^%\n]*\n\+cimstatuscodedescription: CIM_ERR_\w+%3A",
     "an error of one among several providers, in a trailer: OpenPegasus leaves its name out and "
     "does not encode the text"),
    (r"", r'-\s+ERROR CODE="(\d+)" DESCRIPTION="(CIM_ERR_\w+: )\2(.*)"\n'
          r'\+\s+ERROR CODE="\1" DESCRIPTION="\2\3"',
     "an error that a provider got by calling back: from a process of its own, OpenPegasus names "
     "its code twice"),
    (r"(after|the rest of|the end of) Open", r"^-.* Enumeration context closed when request received\."
     r'"\n\+.* Context undefined\."',
     "an enumeration that is over: OpenPegasus remembers for a while that there was one"),
    (r"^Open.* without a count$", r"^-        PARAMVALUE(.|\n)*^\+        ERROR CODE",
     "an enumeration opened without a count: OpenPegasus answers before it has asked the providers, "
     "and tells their error at the first pull"),
    (r"^Close after Open", r"\A@@[^\n]*\n *IMETHODRESPONSE[^\n]*\n\+        ERROR CODE=\"21\"",
     "closing such an enumeration before its error was told"),
    (r"^Open.* without a count$", r"\n-          VALUE 'TRUE'\n\+          VALUE 'FALSE'",
     "an enumeration without results opened without a count: OpenPegasus says at once that it is "
     "over if that was known in time"),
    (r"^Close after Open", r'\A@@[^\n]*\n *IMETHODRESPONSE[^\n]*\n-        ERROR CODE="21"',
     "closing such an enumeration"),
    (r"^pair BadHeader(Method|Object)Utf8$", r"^\+cimerror: header-mismatch$",
     "a header that is no UTF-8: OpenPegasus gives no CIMError"),
    (rf"^pair Bad({'|'.join(STRICTER)})$", r"^[-+]",
     "a broken request that smisd judges more strictly"),
    (r"^pair BadClassDelete$", r'^-.*CODE="8"(.|\n)*^\+.*CODE="7"',
     "smisd's classes are read from files and cannot be deleted by clients"),
    (r"^pair BadHttpDelete$", r"\+HTTP/1.1 400",
     "OpenPegasus reads DELETE as POST"),
    (r"^pair BadHttpGet$", r"-html",
     "OpenPegasus' web module has a page for what it doesn't find"),
    (r"^pair BadHttpGarbage$", r"-HTTP/1.1 501 .*\n\+HTTP/1.1 400",
     "a request line that is none is a bad request to smisd, an unknown method to OpenPegasus"),
)


def reason(name, difference):
    """Why the two may differ here, or None."""
    for pattern, lines, why in KNOWN:
        if re.search(pattern, name) and re.search(lines, difference, re.M):
            return why
    return None
