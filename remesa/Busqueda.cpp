#include "remesa/Busqueda.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cstring>
#include <span>
#include <vector>

#include "remesa/CaracteresSEPA.h"

namespace remesa {
namespace {

constexpr bool EsLetra(char c) {
  return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z');
}

constexpr char Minuscula(char c) {
  return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

/// Lo que queda de cada carácter al no distinguir mayúsculas ni acentos. Por debajo de 80 solo se juntan las
/// mayúsculas y los de control: con ello cuenta la criba.
std::array<char, 256> PlegarTodos() {
  constexpr char kEuro = '\x80';
  std::array<char, 256> plegados{};
  for (std::size_t i = 0; i < plegados.size(); ++i) {
    const char c = static_cast<char>(i);
    const char sepa = EquivalenteSEPA(c);
    const bool cambia = c != kEuro && (EsLetra(sepa) || EsCifra(sepa) || sepa == ' ' ||
                                       (i >= 0x80 && (sepa == '\'' || sepa == '-')));
    plegados[i] = Minuscula(cambia ? sepa : c);
  }
  return plegados;
}

const std::array<char, 256> kPlegados = PlegarTodos();

char Plegado(char c) {
  return kPlegados[static_cast<std::uint8_t>(c)];
}

/// Cuanto menor, más corriente en una remesa: ceros y blancos de relleno, cifras, letras del español.
std::size_t Rareza(char c) {
  constexpr std::string_view kCorrientes = " 0123456789eaosrnildtcumpbgvyqhfzjxkw";
  return kCorrientes.find(c);
}

/// Campos que dicen algo que se busca; los demás son códigos o cifras del propio formato.
bool SeLee(const Campo& campo) {
  switch (campo.valor) {
    case ValorCampo::Texto:
    case ValorCampo::Identificador:
    case ValorCampo::Referencia:
    case ValorCampo::Cuenta:
    case ValorCampo::Bic:
    case ValorCampo::Direccion:
    case ValorCampo::CodigoIdentificacion:
    case ValorCampo::EmisorIdentificacion:
    case ValorCampo::EntidadOriginal:
    case ValorCampo::IdentificacionFichero:
      return true;
    default:
      return false;
  }
}

bool EsCuenta(const Campo& campo) {
  return campo.valor == ValorCampo::Cuenta;
}

/// Lo que se lee de los registros de una clase. De uno que no se conoce, todo.
struct Legible {
  std::span<const Campo> campos;
  // Entre qué posiciones, desde 0 y sin la última: ni el código del principio ni lo libre del final.
  std::size_t desde = 0, hasta = kLongitudRegistro;
  std::array<std::uint8_t, kLongitudRegistro> cual{};  // el campo de cada posición, desde 1; 0 si no se lee

  explicit Legible(std::span<const Campo> suyos) : campos(suyos) {
    if (campos.empty()) {
      cual.fill(1);
      return;
    }
    const auto primero = std::ranges::find_if(campos, SeLee);
    if (primero == campos.end()) {
      hasta = 0;
      return;
    }
    desde = static_cast<std::size_t>(primero->donde.desde) - 1;
    if (campos.back().libre()) hasta = static_cast<std::size_t>(campos.back().donde.desde) - 1;
    for (std::size_t i = 0; i < campos.size(); ++i)
      if (SeLee(campos[i]))
        std::fill_n(cual.begin() + campos[i].donde.desde - 1, campos[i].donde.longitud(),
                    static_cast<std::uint8_t>(i + 1));
  }
};

const std::vector<Legible> kLegibles = [] {
  std::vector<Legible> legibles;
  constexpr auto kClases = static_cast<std::size_t>(ClaseRegistro::Desconocido);
  legibles.reserve(kClases);
  for (std::size_t i = 0; i < kClases; ++i)
    legibles.emplace_back(CamposDe(static_cast<ClaseRegistro>(i)));
  return legibles;
}();

/// De los registros que devuelve el banco, y de los que no se conocen.
const std::vector<Legible> kOtrosLegibles = [] {
  constexpr std::string_view kCodigos[] = {"", "11", "12", "13", "14", "15", "21", "22", "23", "24", "25"};
  std::vector<Legible> legibles;
  legibles.reserve(std::size(kCodigos));
  for (const std::string_view codigo : kCodigos)
    legibles.emplace_back(CamposDe(codigo));
  return legibles;
}();

const Legible& LegibleDe(std::string_view registro) {
  if (const ClaseRegistro clase = Clase(registro); clase != ClaseRegistro::Desconocido)
    return kLegibles[static_cast<std::size_t>(clase)];
  return *std::ranges::find(kOtrosLegibles, CamposDe(registro).data(),
                            [](const Legible& l) { return l.campos.data(); });
}

/// El campo dice ese importe, leído como en las sumas.
bool EsImporte(std::string_view campo, std::int64_t centimos) {
  if (campo.empty()) return false;
  if (!std::ranges::all_of(campo, EsCifra)) return ValorNumerico(campo) == static_cast<double>(centimos);
  std::int64_t resto = centimos;
  for (std::size_t i = campo.size(); i > 0; --i, resto /= 10)
    if (campo[i - 1] != static_cast<char>('0' + resto % 10)) return false;
  return resto == 0;
}

using Trozo = unsigned char __attribute__((vector_size(16)));
constexpr std::size_t kTrozo = sizeof(Trozo);

Trozo Leer(const char* de) {
  Trozo trozo;
  std::memcpy(&trozo, de, kTrozo);
  return trozo;
}

Trozo Lleno(char c) {
  const auto byte = static_cast<unsigned char>(c);
  return Trozo{} + byte;
}

/// Los bytes de un trozo que pueden ser, plegados, un carácter: el bit alto puesto. Uno de los altos puede
/// ser cualquiera.
class Criba {
 public:
  explicit Criba(char cual) : valor_(Lleno(cual)), caja_(Lleno(EsLetra(cual) ? ' ' : '\0')) {}
  Trozo operator()(Trozo trozo) const { return reinterpret_cast<Trozo>((trozo | caja_) == valor_) | trozo; }

 private:
  Trozo valor_;
  Trozo caja_;  // el bit que distingue una mayúscula de su minúscula, si las tiene
};

/// Da a `ver` las posiciones de `bytes` (desde 0) donde puede estar `primero` con `segundo` detrás o, con
/// `oBlanco`, un blanco, hasta que diga que basta. Sin `segundo`, vale cualquiera.
template <typename Ver>
void Cribar(std::string_view bytes, char primero, char segundo, bool oBlanco, const Ver& ver) {
  constexpr std::size_t kJuntos = 4;
  using Mitades = std::uint64_t __attribute__((vector_size(16)));
  constexpr std::uint64_t kAltos = 0x8080808080808080;
  const Criba este(primero), otro(segundo), blanco(oBlanco ? ' ' : segundo);
  const auto verMitad = [&](std::uint64_t puede, std::size_t i) {
    for (puede &= kAltos; puede != 0; puede &= puede - 1)
      if (ver(i + static_cast<std::size_t>(std::countr_zero(puede)) / 8)) return true;
    return false;
  };
  const auto verTrozo = [&](Trozo puede, std::size_t i) {
    if (segundo != '\0') {
      const Trozo detras = Leer(bytes.data() + i + 1);
      puede &= otro(detras) | blanco(detras);
    }
    const auto mitades = reinterpret_cast<Mitades>(puede);
    return verMitad(mitades[0], i) || verMitad(mitades[1], i + sizeof(std::uint64_t));
  };
  std::size_t i = 0;
  for (; i + kJuntos * kTrozo < bytes.size(); i += kJuntos * kTrozo) {
    const char* de = bytes.data() + i;
    const std::array<Trozo, kJuntos> puede{este(Leer(de)), este(Leer(de + kTrozo)),
                                           este(Leer(de + 2 * kTrozo)), este(Leer(de + 3 * kTrozo))};
    const auto juntas = reinterpret_cast<Mitades>((puede[0] | puede[1]) | (puede[2] | puede[3]));
    if (((juntas[0] | juntas[1]) & kAltos) == 0) continue;
    for (std::size_t j = 0; j < kJuntos; ++j)
      if (verTrozo(puede[j], i + j * kTrozo)) return;
  }
  for (; i + kTrozo < bytes.size(); i += kTrozo)
    if (verTrozo(este(Leer(bytes.data() + i)), i)) return;
  // Lo que queda, en un trozo que vuelve sobre algo de lo visto; y el último, que no tiene otro detrás.
  if (i + 1 < bytes.size() && bytes.size() > kTrozo) {
    i = bytes.size() - kTrozo - 1;
    if (verTrozo(este(Leer(bytes.data() + i)), i)) return;
    i += kTrozo;
  }
  for (; i < bytes.size(); ++i)
    if (Plegado(bytes[i]) == primero && ver(i)) return;
}

}  // namespace

Busqueda::Busqueda(std::string_view texto, std::optional<std::int64_t> centimos)
    : texto_(texto), centimos_(centimos) {
  std::ranges::transform(texto_, texto_.begin(), Plegado);
  texto_ = Recortar(texto_);
  if (texto_.empty()) return;
  cuenta_ = texto_;
  std::erase(cuenta_, ' ');
  // Sin ninguna cifra no hace falta: las letras de una cuenta van juntas.
  const auto deCuenta = [](char c) { return EsLetra(c) || EsCifra(c); };
  if (cuenta_.size() > static_cast<std::size_t>(kCuentaDeudor.longitud()) ||
      !std::ranges::all_of(cuenta_, deCuenta) || std::ranges::none_of(cuenta_, EsCifra))
    cuenta_.clear();
  // El último no, que no tiene otro detrás. Las cuentas enteras empiezan igual, y se distinguen al final.
  constexpr std::size_t kCuentaLarga = 12;
  const auto fin = texto_.size() > 1 ? texto_.cend() - 1 : texto_.cend();
  const auto rara = [](auto desde, auto hasta) {
    return std::max_element(desde, hasta, [](char a, char b) { return Rareza(a) < Rareza(b); });
  };
  auto esta = rara(texto_.cbegin(), fin);
  if (cuenta_.size() >= kCuentaLarga) {
    // Casi todo son cifras: distingue más la pareja que una sola. Los ceros seguidos, que están en todas
    // partes, solo si no hay otra cosa.
    constexpr int kCeros = 2;
    constexpr std::ptrdiff_t kPais = 2;  // sus letras
    int mejor = 0;
    const auto mirar = [&](auto c, auto hasta) {
      for (; c != hasta; ++c) {
        const auto detras = std::find_if(c + 1, texto_.cend(), [](char otro) { return otro != ' '; });
        const int rareza = *c == ' ' ? 0 : static_cast<int>(Rareza(*c) + Rareza(*detras));
        if (rareza <= mejor) continue;
        mejor = rareza;
        esta = c;
      }
    };
    mirar(fin - kCuentaLarga / 2, fin);
    if (mejor <= kCeros) mirar(texto_.cbegin() + kPais, fin);
  }
  enTexto_ = static_cast<std::size_t>(esta - texto_.cbegin());
  enCuenta_ = enTexto_ - static_cast<std::size_t>(std::count(texto_.cbegin(), esta, ' '));
}

std::optional<Posiciones> Busqueda::en(std::string_view registro) const {
  if (vacia()) return {};
  const Legible& legible = LegibleDe(registro);
  if (centimos_)
    for (const Campo& campo : legible.campos)
      if (campo.valor == ValorCampo::Importe && EsImporte(LeerCampo(registro, campo.donde), *centimos_))
        return campo.donde;
  const std::size_t desde = legible.desde;
  registro = registro.substr(0, legible.hasta);
  if (registro.size() <= desde) return {};
  const bool deCuenta = !cuenta_.empty();
  const std::string& forma = deCuenta ? cuenta_ : texto_;
  const std::size_t detras = (deCuenta ? enCuenta_ : enTexto_) + 1;
  std::optional<Posiciones> hallado;
  Cribar(registro.substr(desde), texto_[enTexto_], detras < forma.size() ? forma[detras] : '\0', deCuenta,
         [&](std::size_t i) {
           const std::size_t cual = legible.cual[desde + i];
           if (cual == 0) return false;
           hallado =
               candidato(registro, legible.campos.empty() ? nullptr : &legible.campos[cual - 1], desde + i);
           return hallado.has_value();
         });
  return hallado;
}

/// El carácter `donde` del registro puede ser el buscado.
std::optional<Posiciones> Busqueda::candidato(std::string_view registro, const Campo* campo,
                                              std::size_t donde) const {
  // Lo hallado ha de ser de un solo campo.
  const auto enElCampo = [&](Posiciones cuales) {
    return campo == nullptr || (cuales.desde >= campo->donde.desde && cuales.hasta <= campo->donde.hasta);
  };
  std::optional<Posiciones> hallado;
  bool seguidos = true;
  if (!cuenta_.empty()) {
    // Sin contar los blancos están también los que los tienen iguales.
    hallado = sinBlancos(registro, donde);
    if (!hallado) return {};
    seguidos = static_cast<std::size_t>(hallado->longitud()) == texto_.size();
  }
  if (seguidos && donde >= enTexto_) {
    const std::size_t principio = donde - enTexto_;
    const bool igual = (hallado && texto_.size() == cuenta_.size()) ||
                       std::ranges::equal(registro.substr(principio, texto_.size()), texto_, {}, Plegado);
    const Posiciones posiciones{static_cast<int>(principio) + 1, static_cast<int>(principio + texto_.size())};
    if (igual && enElCampo(posiciones)) return posiciones;
  }
  if (hallado && campo != nullptr && EsCuenta(*campo) && enElCampo(*hallado)) return hallado;
  return {};
}

/// Si está ahí la cuenta, con blancos en medio o sin ellos.
std::optional<Posiciones> Busqueda::sinBlancos(std::string_view registro, std::size_t donde) const {
  const auto igual = [&](std::size_t i, char c) { return Plegado(registro[i]) == c; };
  std::size_t hasta = donde;
  for (std::size_t i = enCuenta_; i < cuenta_.size(); ++i, ++hasta) {
    while (i > enCuenta_ && hasta < registro.size() && registro[hasta] == ' ')
      ++hasta;
    if (hasta >= registro.size() || !igual(hasta, cuenta_[i])) return {};
  }
  std::size_t desde = donde;
  for (std::size_t i = enCuenta_; i > 0; --i) {
    do {
      if (desde == 0) return {};
      --desde;
    } while (registro[desde] == ' ');
    if (!igual(desde, cuenta_[i - 1])) return {};
  }
  return Posiciones{static_cast<int>(desde) + 1, static_cast<int>(hasta)};
}

}  // namespace remesa
