#include "remesa/Huella.h"

#include <bit>
#include <cstring>
#include <random>

namespace remesa {
namespace {

struct Semilla {
  std::uint64_t k0, k1;
};

const Semilla& SemillaDeHoy() {
  static const Semilla semilla = [] {
    std::random_device azar;
    const auto palabra = [&azar] { return std::uint64_t{azar()} << 32 | azar(); };
    const std::uint64_t primera = palabra();
    return Semilla{primera, palabra()};
  }();
  return semilla;
}

class SipHash {
 public:
  explicit SipHash(const Semilla& s)
      : a_(s.k0 ^ 0x736f6d6570736575),
        b_(s.k1 ^ 0x646f72616e646f6d),
        c_(s.k0 ^ 0x6c7967656e657261),
        d_(s.k1 ^ 0x7465646279746573) {}

  void palabra(std::uint64_t m) {
    d_ ^= m;
    vuelta();
    a_ ^= m;
  }
  std::uint64_t terminar() {
    c_ ^= 0xff;
    vuelta();
    vuelta();
    vuelta();
    return a_ ^ b_ ^ c_ ^ d_;
  }

 private:
  void vuelta() {
    a_ += b_;
    b_ = std::rotl(b_, 13) ^ a_;
    a_ = std::rotl(a_, 32);
    c_ += d_;
    d_ = std::rotl(d_, 16) ^ c_;
    a_ += d_;
    d_ = std::rotl(d_, 21) ^ a_;
    c_ += b_;
    b_ = std::rotl(b_, 17) ^ c_;
    c_ = std::rotl(c_, 32);
  }

  std::uint64_t a_, b_, c_, d_;
};

std::uint64_t Terminar(SipHash huella, std::string_view clave) {
  constexpr std::size_t kPalabra = sizeof(std::uint64_t);
  const std::uint64_t largo = clave.size();
  std::uint64_t m = 0;
  for (; clave.size() >= kPalabra; clave.remove_prefix(kPalabra)) {
    std::memcpy(&m, clave.data(), kPalabra);
    huella.palabra(m);
  }
  m = 0;
  if (!clave.empty()) std::memcpy(&m, clave.data(), clave.size());  // una vista vacía puede no tener bytes
  huella.palabra(m | largo << 56);
  return huella.terminar();
}

}  // namespace

std::uint64_t Huella(std::string_view clave) {
  return Terminar(SipHash(SemillaDeHoy()), clave);
}

std::uint64_t Huella(std::uint64_t suya, std::string_view clave) {
  SipHash huella(SemillaDeHoy());
  huella.palabra(suya);
  return Terminar(huella, clave);
}

std::uint64_t Mezclar(std::uint64_t una, std::uint64_t otra) {
  SipHash huella(SemillaDeHoy());
  huella.palabra(una);
  huella.palabra(otra);
  return huella.terminar();
}

}  // namespace remesa
