#include "remesa/ReglasCampos.h"

#include <algorithm>

#include "remesa/Calendario.h"
#include "remesa/Identificacion.h"
#include "remesa/Propositos.h"
#include "remesa/ReglasCuentas.h"
#include "remesa/ReglasIdentificacion.h"
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

/// Los campos de un registro, de uno en uno. Lo que un campo exige de otro que le precede se recuerda.
class MiradaCampos {
 public:
  MiradaCampos(Anotador& anotador, const ContextoCampos& contexto)
      : anotador_(anotador), contexto_(contexto) {}

  /// Un defecto por campo: si el valor no vale, lo demás sobra.
  void mirar(const Campo& campo) {
    // Está entero: lo ha visto quien llama.
    const std::string_view bytes(anotador_.registro().data() + campo.donde.desde - 1,
                                 static_cast<std::size_t>(campo.donde.longitud()));
    const std::string_view valor = Recortar(bytes);
    const std::uint64_t antes = hallados();
    // Un registro sin versión o sin número de dato los tiene equivocados.
    const bool deTipo = campo.valor == ValorCampo::Version || campo.valor == ValorCampo::NumeroDato;
    if (!deTipo && EstaVacio(campo, valor))
      vacio(campo);
    else if (!deTipo && campo.tipo == TipoCampo::N && !SonCifras(bytes))
      noNumerico(campo, valor);
    else
      conValor(campo, valor);
    if (campo.tipo == TipoCampo::N || campo.libre() || valor.empty() || antes != hallados()) return;
    if (bytes.front() == ' ') anotador_.campo(C::SinAlinear, campo);
    mirarCaracteres(campo, bytes);
  }

  /// La dirección entera es un solo aviso, en su primera línea: tras el país o, si el registro no llega a él,
  /// al final. Fuera del Espacio Económico Europeo hace falta, aunque el fichero no pueda darla estructurada.
  void cerrarDireccion() {
    if (direccion_ == nullptr) return;
    const std::string_view registro = anotador_.registro();
    const bool deAdeudo = anotador_.clase() == ClaseRegistro::Adeudo;
    if (deAdeudo && CuentaForanea(registro)) {
      if (!contexto_.direccionLibre) anotador_.campo(C::Direccion, *direccion_, "XML");
    } else if (!deAdeudo || EsPaisConIban(PaisDeCuenta(registro))) {
      anotador_.campo(C::Direccion, *direccion_);
    }
    direccion_ = nullptr;
  }

 private:
  std::uint64_t hallados() const { return anotador_.errores() + anotador_.avisos(); }

  /// Un campo numérico que no es obligatorio puede venir con los ceros que lo rellenan.
  static bool EstaVacio(const Campo& campo, std::string_view valor) {
    if (valor.empty()) return true;
    return campo.tipo == TipoCampo::N && !campo.obligatorio &&
           valor.find_first_not_of('0') == std::string_view::npos;
  }

  void vacio(const Campo& campo) {
    switch (campo.valor) {
      case ValorCampo::Libre:
        return;
      case ValorCampo::Bic:
        if (CuentaForanea(anotador_.registro())) anotador_.campo(C::ObligatorioVacio, campo);
        return;
      case ValorCampo::Pais:
        if (direccion_ != nullptr) anotador_.campo(C::ObligatorioVacio, campo);
        return trasDireccion();
      case ValorCampo::TipoIdentificacion:
        return identificacion_.tipo(campo, {}, true);
      case ValorCampo::CodigoIdentificacion:
        return identificacion_.codigo(campo, {});
      default:
        if (campo.obligatorio) anotador_.campo(C::ObligatorioVacio, campo);
    }
  }

  /// Si son cifras con blancos a un lado, el número se entiende y lo que falta son los ceros.
  void noNumerico(const Campo& campo, std::string_view valor) {
    if (campo.valor == ValorCampo::Fecha || !SonCifras(valor)) {
      if (campo.valor == ValorCampo::TipoIdentificacion) identificacion_.tipo(campo, valor, false);
      return anotador_.campo(C::NoNumerico, campo, std::string(Lista(campo.valor)));
    }
    const auto ancho = static_cast<std::size_t>(campo.donde.longitud());
    const std::string relleno = std::string(ancho - valor.size(), '0').append(valor);
    const std::uint64_t antes = hallados();
    conValor(campo, relleno);
    if (antes == hallados()) anotador_.campo(C::SinAlinear, campo, relleno);
  }

  void conValor(const Campo& campo, std::string_view valor) {
    switch (campo.valor) {
      case ValorCampo::Libre:
        return anotador_.campo(C::LibreConDatos, campo);
      case ValorCampo::Version:
        if (valor != kVersion1914 && valor != kVersion1944 && valor != kVersion1915)
          anotador_.campo(C::Version, campo, std::string(contexto_.version));
        return;
      case ValorCampo::NumeroDato:
        return mirarNumeroDato(campo, valor);
      case ValorCampo::Fecha:
        return mirarFecha(campo, valor);
      case ValorCampo::Importe:
        if (anotador_.clase() == ClaseRegistro::Adeudo &&
            valor.find_first_not_of('0') == std::string_view::npos)
          anotador_.campo(C::ImporteCero, campo);
        return;
      case ValorCampo::Identificador:
        return mirarIdentificador(campo, valor);
      case ValorCampo::Cuenta:
        return ComprobarCuenta(anotador_, campo, valor);
      case ValorCampo::Bic:
        return ComprobarBic(anotador_, campo, valor);
      case ValorCampo::Direccion:
        if (direccion_ == nullptr) direccion_ = &campo;
        return;
      case ValorCampo::Pais:
        return mirarPais(campo, valor);
      case ValorCampo::TipoIdentificacion: {
        const bool admitido = EstaEn(Lista(campo.valor), valor);
        identificacion_.tipo(campo, valor, admitido);
        return mirarLista(campo, valor);
      }
      case ValorCampo::CodigoIdentificacion:
        return identificacion_.codigo(campo, valor);
      case ValorCampo::EmisorIdentificacion:
        return identificacion_.emisor(campo, valor);
      case ValorCampo::IdentificacionFichero:
        return mirarIdentificacion(campo, valor);
      case ValorCampo::Categoria:
        return mirarProposito(campo, valor, EsCategoriaDeProposito(valor));
      case ValorCampo::Proposito:
        return mirarProposito(campo, valor, EsProposito(valor));
      default:
        return mirarLista(campo, valor);
    }
  }

  void mirarLista(const Campo& campo, std::string_view valor) {
    const std::string_view lista = Lista(campo.valor);
    if (!lista.empty() && !EstaEn(lista, valor)) anotador_.campo(C::FueraDeLista, campo, std::string(lista));
  }

  void mirarNumeroDato(const Campo& campo, std::string_view valor) {
    const std::string_view debido = NumeroDato(anotador_.clase());
    if (!debido.empty() && valor != debido) anotador_.campo(C::NumeroDato, campo, std::string(debido));
  }

  void mirarFecha(const Campo& campo, std::string_view valor) {
    if (valor == contexto_.fechaCobro) return;
    const std::optional<Dia> fecha = LeerFecha(valor);
    if (!fecha)
      anotador_.campo(C::FechaInexistente, campo);
    else if (EsAntigua(*fecha))
      anotador_.campo(C::FechaAntigua, campo);
  }

  void mirarIdentificador(const Campo& campo, std::string_view valor) {
    if (valor == contexto_.acreedor) return;
    if (const Control control = ComprobarIdentificador(valor); !control.correcto)
      anotador_.campo(C::IdentificadorAcreedor, campo, control.digitos);
  }

  void mirarPais(const Campo& campo, std::string_view valor) {
    const bool balanza = anotador_.clase() == ClaseRegistro::Balanza;
    if (!EsPais(valor) || (balanza && valor == "ES")) anotador_.campo(C::FueraDeLista, campo);
    trasDireccion();
  }

  void trasDireccion() {
    const std::string_view registro = anotador_.registro();
    if (direccion_ == nullptr && anotador_.clase() == ClaseRegistro::Adeudo && CuentaForanea(registro))
      anotador_.campo(C::FaltaDireccion, *CampoEn(registro, kDireccionDeudor.desde));
    cerrarDireccion();
  }

  void mirarIdentificacion(const Campo& campo, std::string_view valor) {
    // De la de una remesa financiada solo se sabe cómo empieza.
    if (!EsDeFinanciada(valor) && FechaDeIdentificacion(valor).empty())
      anotador_.campo(C::IdentificacionFichero, campo);
  }

  void mirarProposito(const Campo& campo, std::string_view valor, bool enLista) {
    if (!TieneFormaDeProposito(valor))
      anotador_.campo(C::Proposito, campo);
    else if (!enLista)
      anotador_.campo(C::PropositoRaro, campo);
  }

  /// Un aviso por campo, con los caracteres de fuera del juego, cada uno una vez, y del primero al último.
  void mirarCaracteres(const Campo& campo, std::string_view bytes) {
    std::string malos;
    std::size_t primero = 0, ultimo = 0;
    for (std::size_t i = BuscarCaracter(bytes, 0); i < bytes.size(); i = BuscarCaracter(bytes, i + 1)) {
      if (contexto_.utf8 && (static_cast<unsigned char>(bytes[i]) & 0x80) != 0) continue;
      if (malos.empty()) primero = i;
      ultimo = i;
      if (malos.find(bytes[i]) == std::string::npos) malos += bytes[i];
    }
    if (malos.empty()) return;
    const auto posicion = [&](std::size_t i) { return campo.donde.desde + static_cast<int>(i); };
    anotador_.parte(C::Caracteres, campo, {posicion(primero), posicion(ultimo)}, std::move(malos));
  }

  Anotador& anotador_;
  ContextoCampos contexto_;
  const Campo* direccion_ = nullptr;
  ReglasIdentificacion identificacion_{anotador_};
};

}  // namespace

void ComprobarCampos(Anotador& anotador, const ContextoCampos& contexto) {
  MiradaCampos mirada(anotador, contexto);
  const auto largo = static_cast<int>(std::min(anotador.registro().size(), kLongitudRegistro));
  for (const Campo& campo : CamposDe(anotador.clase())) {
    if (campo.donde.hasta > largo) break;
    mirada.mirar(campo);
  }
  mirada.cerrarDireccion();
}

}  // namespace remesa
