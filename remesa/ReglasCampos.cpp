#include "remesa/ReglasCampos.h"

#include <algorithm>

#include "remesa/Calendario.h"
#include "remesa/SEPA.h"
#include "remesa/Validez.h"

namespace remesa {
namespace {

using C = CodigoHallazgo;

/// Número de dato de cada registro; "" en los de totales, que no lo llevan.
std::string_view NumeroDato(ClaseRegistro clase) {
  switch (clase) {
    case ClaseRegistro::Presentador:
      return "001";
    case ClaseRegistro::Acreedor:
      return "002";
    default:
      // De un "03" da la clase, así que es siempre el suyo.
      return {};
  }
}

/// Las palabras que admite un campo de lista cerrada, separadas por blancos; "" si no lo es.
std::string_view Lista(ValorCampo valor) {
  switch (valor) {
    case ValorCampo::TipoAdeudo:
      return "FNAL FRST OOFF RCUR";
    case ValorCampo::TipoIdentificacion:
      return "1 2";
    case ValorCampo::ClaseCuenta:
      return "A B";
    case ValorCampo::ClasePago:
      return "01 02";
    case ValorCampo::EntidadOriginal:
      return "SMNDA";
    default:
      return {};
  }
}

bool EstaEn(std::string_view lista, std::string_view palabra) {
  if (palabra.find(' ') != std::string_view::npos) return false;
  const std::size_t donde = lista.find(palabra);
  if (donde == std::string_view::npos) return false;
  const std::size_t tras = donde + palabra.size();
  return (donde == 0 || lista[donde - 1] == ' ') && (tras == lista.size() || lista[tras] == ' ');
}

/// El banco solo hace falta si la cuenta dice ser de otro país.
bool CuentaForanea(std::string_view adeudo) {
  const std::string_view cuenta = Recortar(LeerCampo(adeudo, kCuentaDeudor));
  const auto esLetra = [](char c) { return c >= 'A' && c <= 'Z'; };
  return cuenta.size() > 1 && esLetra(cuenta[0]) && esLetra(cuenta[1]) && !cuenta.starts_with("ES") &&
         LeerCampo(adeudo, kClaseCuenta) != "B";
}

/// Los campos de un registro, de uno en uno. Lo que un campo exige de otro que le precede se recuerda.
class MiradaCampos {
 public:
  MiradaCampos(Anotador& anotador, const DatosCabecera& cabecera)
      : anotador_(anotador), cabecera_(cabecera) {}

  void mirar(const Campo& campo) {
    const std::string_view bytes = remesa::LeerCampo(anotador_.registro(), campo.donde);
    const std::string_view valor = Recortar(bytes);
    const std::uint64_t antes = anotador_.errores() + anotador_.avisos();
    if (campo.valor == ValorCampo::TipoIdentificacion) identificacion_ = {};
    // Un registro sin versión o sin número de dato los tiene equivocados.
    const bool deTipo = campo.valor == ValorCampo::Version || campo.valor == ValorCampo::NumeroDato;
    if (!deTipo && EstaVacio(campo, valor))
      vacio(campo);
    else if (!deTipo && campo.tipo == TipoCampo::N && !SonCifras(bytes))
      anotador_.campo(C::NoNumerico, campo);
    else
      conValor(campo, valor);
    const bool limpio = antes == anotador_.errores() + anotador_.avisos();
    if (limpio && campo.tipo == TipoCampo::A && !campo.libre() && !valor.empty())
      mirarCaracteres(campo, bytes);
  }

  /// La dirección entera es un solo aviso, en su primera línea: tras el país o, si el registro no llega
  /// a él, al final.
  void cerrarDireccion() {
    if (direccion_ != nullptr) anotador_.campo(C::Direccion, *direccion_);
    direccion_ = nullptr;
  }

 private:
  /// Un campo numérico que no es obligatorio puede venir con los ceros que lo rellenan.
  static bool EstaVacio(const Campo& campo, std::string_view valor) {
    if (valor.empty()) return true;
    return campo.tipo == TipoCampo::N && !campo.obligatorio &&
           valor.find_first_not_of('0') == std::string_view::npos;
  }

  void vacio(const Campo& campo) {
    bool falta = campo.obligatorio && !campo.libre();
    if (campo.valor == ValorCampo::Bic) falta = CuentaForanea(anotador_.registro());
    if (campo.valor == ValorCampo::Pais) falta = direccion_ != nullptr;
    if (falta) anotador_.campo(C::ObligatorioVacio, campo);
    if (campo.valor == ValorCampo::TipoIdentificacion) identificacion_ = {&campo, {}, {}};
    if (campo.valor == ValorCampo::Pais) cerrarDireccion();
  }

  void conValor(const Campo& campo, std::string_view valor) {
    switch (campo.valor) {
      case ValorCampo::Libre:
        anotador_.campo(C::LibreConDatos, campo);
        break;
      case ValorCampo::Version:
        if (valor != kVersion1914) anotador_.campo(C::Version, campo, std::string(kVersion1914));
        break;
      case ValorCampo::NumeroDato:
        mirarNumeroDato(campo, valor);
        break;
      case ValorCampo::Fecha:
        if (valor != cabecera_.fechaCobro && !LeerFecha(valor)) anotador_.campo(C::FechaInexistente, campo);
        break;
      case ValorCampo::Importe:
        if (anotador_.clase() == ClaseRegistro::Adeudo &&
            valor.find_first_not_of('0') == std::string_view::npos)
          anotador_.campo(C::ImporteCero, campo);
        break;
      case ValorCampo::Identificador:
        if (valor != cabecera_.acreedor)
          mirarControl(C::IdentificadorAcreedor, campo, ComprobarIdentificador(valor));
        break;
      case ValorCampo::Cuenta:
        mirarCuenta(campo, valor);
        break;
      case ValorCampo::Bic:
        if (!EsBic(valor)) anotador_.campo(C::Bic, campo);
        break;
      case ValorCampo::Direccion:
        if (direccion_ == nullptr) direccion_ = &campo;
        break;
      case ValorCampo::Pais:
        mirarPais(campo, valor);
        break;
      case ValorCampo::TipoIdentificacion:
        identificacion_ = {&campo, valor, {}};
        mirarLista(campo, valor);
        break;
      case ValorCampo::CodigoIdentificacion:
        identificacion_.codigo = valor;
        mirarCodigoIdentificacion(campo, valor);
        break;
      case ValorCampo::EmisorIdentificacion:
        if (identificacion_.tipo == "1" && !identificacion_.codigo.starts_with('I'))
          anotador_.campo(C::Identificacion, campo);
        break;
      default:
        if (const std::string_view lista = Lista(campo.valor); !lista.empty()) mirarLista(campo, valor);
        break;
    }
  }

  void mirarLista(const Campo& campo, std::string_view valor) {
    const std::string_view lista = Lista(campo.valor);
    if (!EstaEn(lista, valor)) anotador_.campo(C::FueraDeLista, campo, std::string(lista));
  }

  void mirarNumeroDato(const Campo& campo, std::string_view valor) {
    const std::string_view debido = NumeroDato(anotador_.clase());
    if (!debido.empty() && valor != debido) anotador_.campo(C::NumeroDato, campo, std::string(debido));
  }

  void mirarControl(CodigoHallazgo codigo, const Campo& campo, const Control& control) {
    if (!control.correcto) anotador_.campo(codigo, campo, control.digitos);
  }

  void mirarCuenta(const Campo& campo, std::string_view valor) {
    const bool deAdeudo = anotador_.clase() == ClaseRegistro::Adeudo;
    if (deAdeudo && remesa::LeerCampo(anotador_.registro(), kClaseCuenta) == "B") {
      if (!EsCcc(valor)) anotador_.campo(C::Ccc, campo);
      return;
    }
    // La de antes de cambiar el mandato no dice de qué clase es.
    if (anotador_.clase() == ClaseRegistro::Mandato && EsCcc(valor)) return;
    mirarControl(C::Iban, campo, ComprobarIban(valor));
  }

  void mirarPais(const Campo& campo, std::string_view valor) {
    const bool balanza = anotador_.clase() == ClaseRegistro::Balanza;
    if (!EsPais(valor) || (balanza && valor == "ES")) anotador_.campo(C::FueraDeLista, campo);
    cerrarDireccion();
  }

  /// El código empieza por la letra que va con el tipo.
  void mirarCodigoIdentificacion(const Campo& campo, std::string_view valor) {
    const std::string_view tipo = identificacion_.tipo;
    if (tipo.empty() && identificacion_.campo != nullptr)
      anotador_.campo(C::ObligatorioVacio, *identificacion_.campo, "1 2");
    const std::string_view letras = tipo == "1" ? "A I" : tipo == "2" ? "J" : "A I J";
    if (!EstaEn(letras, valor.substr(0, 1)))
      anotador_.campo(C::Identificacion, campo, std::string(letras));
    else if (valor.starts_with('A') && !EsBic(valor.substr(1)))
      anotador_.campo(C::Identificacion, campo, "A+BIC I");
  }

  /// Un aviso por cada tramo de caracteres de fuera del juego.
  void mirarCaracteres(const Campo& campo, std::string_view bytes) {
    std::size_t mirado = 0;
    while ((mirado = BuscarCaracter(bytes, mirado)) < bytes.size()) {
      const std::size_t fin = BuscarCaracter(bytes, mirado, false);
      anotador_.parte(
          C::Caracteres, campo,
          {campo.donde.desde + static_cast<int>(mirado), campo.donde.desde + static_cast<int>(fin) - 1});
      mirado = fin;
    }
  }

  struct Identificacion {
    const Campo* campo = nullptr;
    std::string_view tipo, codigo;
  };

  Anotador& anotador_;
  DatosCabecera cabecera_;
  const Campo* direccion_ = nullptr;
  Identificacion identificacion_;
};

}  // namespace

void ComprobarCampos(Anotador& anotador, const DatosCabecera& cabecera) {
  MiradaCampos mirada(anotador, cabecera);
  const auto largo = static_cast<int>(std::min(anotador.registro().size(), kLongitudRegistro));
  for (const Campo& campo : CamposDe(anotador.clase())) {
    if (campo.donde.hasta > largo) break;
    mirada.mirar(campo);
  }
  mirada.cerrarDireccion();
}

}  // namespace remesa
