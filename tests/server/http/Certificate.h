// Files for a TLS server.
#pragma once

#include <cstdio>
#include <memory>
#include <string>

#include <openssl/evp.h>
#include <openssl/pem.h>
#include <openssl/x509.h>

#include "tests/server/TemporaryDirectory.h"

namespace smisd::test {

// A key and a certificate of its own for localhost, as files that go with it.
class Certificate {
public:
    Certificate() { makeAnother(); }

    // Writes others in their place.
    void makeAnother() {
        const std::unique_ptr<EVP_PKEY, decltype(&EVP_PKEY_free)> pair(EVP_EC_gen("P-256"),
                                                                       EVP_PKEY_free);
        const std::unique_ptr<X509, decltype(&X509_free)> x509(X509_new(), X509_free);
        X509_gmtime_adj(X509_getm_notBefore(x509.get()), 0);
        X509_gmtime_adj(X509_getm_notAfter(x509.get()), 3600);
        X509_set_pubkey(x509.get(), pair.get());
        X509_sign(x509.get(), pair.get(), EVP_sha256());
        write(certificate, [&](FILE* out) { PEM_write_X509(out, x509.get()); });
        write(key, [&](FILE* out) {
            PEM_write_PrivateKey(out, pair.get(), nullptr, nullptr, 0, nullptr, nullptr);
        });
    }

private:
    TemporaryDirectory _directory;

public:
    const std::string certificate = _directory.path / "cert.pem";
    const std::string key = _directory.path / "key.pem";

private:
    template<class Write>
    static void write(const std::string& path, Write content) {
        const std::unique_ptr<FILE, int (*)(FILE*)> out(std::fopen(path.c_str(), "w"), std::fclose);
        content(out.get());
    }
};

} // namespace smisd::test
