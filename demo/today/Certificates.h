#pragma once

#include <memory>
#include <string>
#include <vector>

#include <openssl/evp.h>
#include <openssl/x509.h>

namespace today {

// A certificate for some hosts, signed by an authority that is made with it and then forgets its
// key: nothing of it can be used for anything else, and no key is ever written.
class Certificates {
public:
    // False when the library fails.
    bool Make(const std::vector<std::string>& hosts);

    X509* Certificate() const { return fCertificate.get(); }
    EVP_PKEY* Key() const { return fKey.get(); }
    bool WriteAuthority(const std::string& file) const; // as PEM, for who is to trust it

private:
    struct Free {
        void operator()(X509* certificate) const { X509_free(certificate); }
        void operator()(EVP_PKEY* key) const { EVP_PKEY_free(key); }
    };
    std::unique_ptr<X509, Free> fAuthority, fCertificate;
    std::unique_ptr<EVP_PKEY, Free> fKey;
};

} // namespace today
