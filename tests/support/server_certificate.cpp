#include "tests/support/server_certificate.h"

#include <openssl/evp.h>
#include <openssl/pem.h>
#include <openssl/x509v3.h>

#include <cstdio>
#include <stdexcept>

#if defined(__SANITIZE_THREAD__)
/// libcrypto counts references with atomics that the sanitizer does not see: where the last of two threads
/// lets go of an object, the lock in it looks as if it were freed while the other thread takes it.
extern "C" const char* __tsan_default_suppressions() {
    return "race:CRYPTO_THREAD_lock_free\n";
}
#endif

namespace test_support {
namespace {

using Key = std::unique_ptr<EVP_PKEY, decltype([](EVP_PKEY* key) { EVP_PKEY_free(key); })>;
using Certificate = std::unique_ptr<X509, decltype([](X509* certificate) { X509_free(certificate); })>;
using File = std::unique_ptr<std::FILE, decltype([](std::FILE* file) { std::fclose(file); })>;

void addExtension(X509* certificate, int kind, const char* value) {
    X509V3_CTX context;
    X509V3_set_ctx_nodb(&context);
    X509V3_set_ctx(&context, certificate, certificate, nullptr, nullptr, 0);
    X509_EXTENSION* extension = X509V3_EXT_conf_nid(nullptr, &context, kind, value);
    if (!extension) throw std::runtime_error("cannot make the certificate's extension");
    X509_add_ext(certificate, extension, -1);
    X509_EXTENSION_free(extension);
}

Certificate selfSigned(EVP_PKEY* key) {
    Certificate certificate(X509_new());
    X509_set_version(certificate.get(), X509_VERSION_3);
    ASN1_INTEGER_set(X509_get_serialNumber(certificate.get()), 1);
    X509_gmtime_adj(X509_getm_notBefore(certificate.get()), -3600);
    X509_gmtime_adj(X509_getm_notAfter(certificate.get()), 24 * 3600);
    X509_set_pubkey(certificate.get(), key);
    X509_NAME* name = X509_get_subject_name(certificate.get());
    X509_NAME_add_entry_by_txt(name, "CN", MBSTRING_ASC, reinterpret_cast<const unsigned char*>("localhost"),
                               -1, -1, 0);
    X509_set_issuer_name(certificate.get(), name);
    addExtension(certificate.get(), NID_basic_constraints, "critical,CA:TRUE");
    addExtension(certificate.get(), NID_subject_alt_name, "DNS:localhost,IP:127.0.0.1");
    if (!X509_sign(certificate.get(), key, EVP_sha256())) throw std::runtime_error("cannot sign");
    return certificate;
}

}  // namespace

ServerCertificate::ServerCertificate() : context_(SSL_CTX_new(TLS_server_method())) {
    const Key key(EVP_PKEY_Q_keygen(nullptr, nullptr, "EC", "P-256"));
    const Certificate certificate = selfSigned(key.get());
    const File file(std::fopen(pemFile().c_str(), "w"));
    if (!file || !PEM_write_X509(file.get(), certificate.get())) throw std::runtime_error("cannot write PEM");
    const File secret(std::fopen(keyFile().c_str(), "w"));
    if (!secret || !PEM_write_PrivateKey(secret.get(), key.get(), nullptr, nullptr, 0, nullptr, nullptr)) {
        throw std::runtime_error("cannot write PEM");
    }
    SSL_CTX_use_certificate(context_.get(), certificate.get());
    SSL_CTX_use_PrivateKey(context_.get(), key.get());
}

}  // namespace test_support
