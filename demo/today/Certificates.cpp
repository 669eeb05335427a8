#include "today/Certificates.h"

#include <openssl/ec.h>
#include <openssl/pem.h>
#include <openssl/rand.h>
#include <openssl/x509v3.h>

#include <array>
#include <cstdio>

namespace today {

namespace {

constexpr long kHour = 60 * 60;
constexpr long kYear = 365 * 24 * kHour;

bool setName(X509_NAME* name, const char* text) {
    return X509_NAME_add_entry_by_txt(name, "CN", MBSTRING_ASC,
                                      reinterpret_cast<const unsigned char*>(text), -1, -1, 0) == 1;
}

bool extend(X509* certificate, X509* issuer, int what, const std::string& value) {
    X509V3_CTX context;
    X509V3_set_ctx_nodb(&context);
    X509V3_set_ctx(&context, issuer, certificate, nullptr, nullptr, 0);
    X509_EXTENSION* extension = X509V3_EXT_conf_nid(nullptr, &context, what, value.c_str());
    const bool isDone = extension != nullptr && X509_add_ext(certificate, extension, -1) == 1;
    X509_EXTENSION_free(extension);
    return isDone;
}

bool begin(X509* certificate, const char* name, EVP_PKEY* key) {
    std::array<unsigned char, 16> bytes = {};
    if (certificate == nullptr || key == nullptr ||
        RAND_bytes(bytes.data(), static_cast<int>(bytes.size())) != 1)
        return false;
    bytes[0] &= 0x7F;
    BIGNUM* number = BN_bin2bn(bytes.data(), static_cast<int>(bytes.size()), nullptr);
    BN_to_ASN1_INTEGER(number, X509_get_serialNumber(certificate));
    BN_free(number);
    X509_set_version(certificate, X509_VERSION_3);
    X509_gmtime_adj(X509_getm_notBefore(certificate), -kHour);
    X509_gmtime_adj(X509_getm_notAfter(certificate), kYear);
    return X509_set_pubkey(certificate, key) == 1 &&
           setName(X509_get_subject_name(certificate), name);
}

bool isSigned(X509* certificate, X509* issuer, EVP_PKEY* key) {
    return X509_set_issuer_name(certificate, X509_get_subject_name(issuer)) == 1 &&
           X509_sign(certificate, key, EVP_sha256()) > 0;
}

} // namespace

bool Certificates::Make(const std::vector<std::string>& hosts) {
    const std::unique_ptr<EVP_PKEY, Free> authorityKey(EVP_EC_gen("P-256"));
    fKey.reset(EVP_EC_gen("P-256"));
    fAuthority.reset(X509_new());
    fCertificate.reset(X509_new());
    std::string names;
    for (const std::string& host : hosts)
        names += (names.empty() ? "DNS:" : ",DNS:") + host;
    X509* authority = fAuthority.get();
    X509* own = fCertificate.get();
    return begin(authority, "Sample boards' authority", authorityKey.get()) &&
           extend(authority, authority, NID_basic_constraints, "critical,CA:TRUE") &&
           extend(authority, authority, NID_key_usage, "critical,keyCertSign") &&
           extend(authority, authority, NID_subject_key_identifier, "hash") &&
           isSigned(authority, authority, authorityKey.get()) &&
           begin(own, "Sample boards", fKey.get()) &&
           extend(own, authority, NID_basic_constraints, "critical,CA:FALSE") &&
           extend(own, authority, NID_subject_alt_name, names) &&
           extend(own, authority, NID_authority_key_identifier, "keyid") &&
           isSigned(own, authority, authorityKey.get());
}

bool Certificates::WriteAuthority(const std::string& file) const {
    FILE* out = fopen(file.c_str(), "we");
    if (out == nullptr)
        return false;
    const bool isWritten = PEM_write_X509(out, fAuthority.get()) == 1;
    return fclose(out) == 0 && isWritten;
}

} // namespace today
