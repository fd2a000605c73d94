#include "ventanas/principal/TextosComprobacion.h"

#include <optional>
#include <string_view>

#include "remesa/Calendario.h"
#include "remesa/PaisesSEPA.h"
#include "remesa/SEPA.h"
#include "remesa/Validez.h"
#include "ventanas/principal/TextosCodigo.h"
#include "ventanas/principal/TextosObservacion.h"

namespace principal {

using namespace Qt::StringLiterals;

namespace {

using C = remesa::CodigoHallazgo;
using comunes::EscritorUtf8;
using remesa::Hallazgo;
using remesa::ValorCampo;

std::string_view NombreFiesta(std::string_view fecha) {
  const auto dia = remesa::LeerFecha(fecha);
  using F = remesa::FestivoTarget;
  switch (dia ? remesa::Festivo(*dia) : F::Ninguno) {
    case F::AnoNuevo:
      return "Año Nuevo";
    case F::ViernesSanto:
      return "Viernes Santo";
    case F::LunesDePascua:
      return "lunes de Pascua";
    case F::Trabajo:
      return "1 de mayo";
    case F::Navidad:
      return "Navidad";
    case F::SanEsteban:
      return "26 de diciembre";
    case F::Ninguno:
      break;
  }
  return {};
}

std::string_view SinCeros(std::string_view cifras) {
  while (cifras.size() > 1 && cifras.front() == '0')
    cifras.remove_prefix(1);
  return cifras;
}

bool EsFecha(const Hallazgo& h) {
  const bool deCampo = h.campo != nullptr && h.campo->valor == ValorCampo::Fecha;
  return deCampo || h.codigo == C::FechaIdentificacion;
}

/// Caracteres de uno en uno: "Ñ ó &".
void AnadirSueltos(std::string& texto, std::string_view bytes, const EscritorUtf8& datos) {
  for (std::size_t i = 0; i < bytes.size(); ++i) {
    if (i > 0) texto += ' ';
    datos.anadir(texto, bytes.substr(i, 1));
  }
}

/// Los céntimos, si el dato es un importe.
std::optional<std::int64_t> Importe(const Hallazgo& h, std::string_view bytes) {
  if ((h.codigo != C::TotalImportes && h.codigo != C::ImporteCero) || !remesa::SonCifras(bytes)) return {};
  return comunes::DesdeWindows1252(bytes).toLongLong();
}

/// Un dato del fichero dentro de una frase: fechas e importes, como se leen; lo demás, abreviado si pasa de
/// `maximo` bytes.
void AnadirDato(std::string& texto, const Hallazgo& h, std::string_view bytes, const EscritorUtf8& datos,
                std::size_t maximo) {
  if (const auto importe = Importe(h, bytes))
    texto += TextoEuros(*importe).toStdString();
  else if (h.codigo == C::TotalAdeudos || h.codigo == C::TotalRegistros)
    datos.anadir(texto, SinCeros(bytes));
  else if (h.codigo == C::Caracteres)
    AnadirSueltos(texto, bytes, datos);
  else if (EsFecha(h) && remesa::LeerFecha(bytes))
    texto += remesa::FechaQ19(bytes);
  else {
    datos.anadir(texto, bytes.substr(0, maximo));
    if (bytes.size() > maximo) texto += "…";
  }
}

void AnadirEnFrase(std::string& texto, const Hallazgo& h, std::string_view bytes, const EscritorUtf8& datos) {
  constexpr std::size_t kMaximo = 60;
  AnadirDato(texto, h, bytes, datos, kMaximo);
}

bool EsLista(C codigo) {
  return codigo == C::CodigoDesconocido || codigo == C::NumeroDato || codigo == C::FueraDeOrden ||
         codigo == C::FaltaRegistro || codigo == C::FueraDeLista || codigo == C::Identificacion ||
         codigo == C::ObligatorioVacio || codigo == C::NoNumerico;
}

/// Las palabras que valen, "01, 02 o 03", o que faltan, "01, 02, 03".
void Enumerar(std::string& texto, const Hallazgo& h) {
  const std::size_t ultimo = h.codigo == C::FaltaRegistro ? std::string::npos : h.esperado.rfind(' ');
  for (std::size_t i = 0; i < h.esperado.size(); ++i) {
    if (h.esperado[i] != ' ')
      texto += h.esperado[i];
    else
      texto += i == ultimo ? " o " : ", ";
  }
}

void Completar(std::string& texto, std::string_view plantilla, const Hallazgo& h, const EscritorUtf8& datos) {
  std::size_t marca = 0;
  while ((marca = plantilla.find('%')) != std::string_view::npos) {
    texto += plantilla.substr(0, marca);
    switch (plantilla[marca + 1]) {
      case 'v':
        AnadirEnFrase(texto, h, h.valor, datos);
        break;
      case 'e':
        if (h.codigo == C::Iban && h.esperado.empty())
          AnadirFormaIban(texto, h.valor.substr(0, 2));
        else
          EsLista(h.codigo) ? Enumerar(texto, h) : AnadirEnFrase(texto, h, h.esperado, datos);
        break;
      case 'o':
        texto += std::to_string(h.otro);
        break;
      case 'f':
        datos.anadirTexto(texto, QString::fromStdString(h.antes->fichero));
        break;
      case 'd':
        texto += h.antes->fecha.empty() ? "sin fecha" : remesa::FechaQ19(h.antes->fecha);
        break;
      case 'r':
        texto += std::to_string(h.antes->registro);
        break;
      case 'm':
        datos.anadirTexto(texto, QString::fromStdString(h.antes->vuelta));
        break;
      default:
        texto += std::to_string(h.donde.desde);
        break;
    }
    plantilla.remove_prefix(marca + 2);
  }
  texto += plantilla;
}

void AnadirQuePasa(std::string& texto, const Hallazgo& h, const EscritorUtf8& datos) {
  Completar(texto, TextosDe(h).que, h, datos);
  if (h.codigo != C::CobroFestivo) return;
  texto.pop_back();
  texto.append(" (").append(NombreFiesta(h.valor)).append(").");
}

/// "3190,80".
QString EnCelda(std::int64_t centimos) {
  constexpr int kMinimo = 3;
  QString cifras = QString::fromStdString(remesa::CifrasDe(centimos, kMinimo));
  return cifras.insert(cifras.size() - 2, u',');
}

template <class Anadir>
QString EnQString(Anadir&& anadir, const Hallazgo& h) {
  static const EscritorUtf8 datos([](const QString& caracter) { return caracter; });
  std::string texto;
  anadir(texto, h, datos);
  return QString::fromStdString(texto);
}

}  // namespace

void AnadirFormaIban(std::string& texto, std::string_view pais) {
  const remesa::FormaIban forma = remesa::FormaIbanDe(pais);
  texto += std::to_string(forma.longitud);
  texto.append(" posiciones: ").append(pais).append(", dos dígitos de control");
  std::string_view estructura = forma.estructura;
  while (!estructura.empty()) {
    const std::size_t clase = estructura.find_first_of("nac");
    const bool ultima = clase + 1 == estructura.size();
    texto.append(ultima ? " y " : ", ").append(estructura.substr(0, clase));
    const bool una = estructura.substr(0, clase) == "1";
    if (estructura[clase] == 'n') texto += una ? " cifra" : " cifras";
    if (estructura[clase] == 'a') texto += una ? " letra" : " letras";
    if (estructura[clase] == 'c') texto += una ? " letra o cifra" : " letras o cifras";
    estructura.remove_prefix(clase + 1);
  }
}

QLatin1String TextoNivel(C codigo) {
  return QLatin1String(remesa::EsError(codigo) ? "error" : "aviso");
}

QString TextoValor(const Hallazgo& hallazgo) {
  return EnQString(
      [](std::string& texto, const Hallazgo& h, const EscritorUtf8& datos) {
        AnadirDato(texto, h, h.valor, datos, std::string::npos);
        if (h.codigo == C::Longitud) texto += " posiciones";
      },
      hallazgo);
}

void AnadirEsperado(std::string& texto, const Hallazgo& hallazgo, const EscritorUtf8& datos) {
  Completar(texto, TextosDe(hallazgo).esperado, hallazgo, datos);
}

QString TextoEsperado(const Hallazgo& hallazgo) {
  return EnQString(AnadirEsperado, hallazgo);
}

QString TextoCampo(const Hallazgo& hallazgo) {
  if (hallazgo.campo == nullptr) return {};
  return QString::fromUtf8(hallazgo.campo->nombre.data(),
                           static_cast<qsizetype>(hallazgo.campo->nombre.size()));
}

void AnadirHallazgo(std::string& texto, const Hallazgo& hallazgo, const EscritorUtf8& datos) {
  AnadirQuePasa(texto, hallazgo, datos);
  texto.append(" ").append(TextosDe(hallazgo).hacer);
}

QString TextoQuePasa(const Hallazgo& hallazgo) {
  return EnQString(AnadirQuePasa, hallazgo);
}

QString TextoQueHacer(const Hallazgo& hallazgo) {
  return QString::fromStdString(std::string(TextosDe(hallazgo).hacer));
}

QString CeldaValor(const Hallazgo& hallazgo) {
  const auto importe = Importe(hallazgo, hallazgo.valor);
  return importe ? EnCelda(*importe) : TextoValor(hallazgo);
}

QString CeldaEsperado(const Hallazgo& hallazgo) {
  const auto importe = Importe(hallazgo, hallazgo.esperado);
  return importe ? EnCelda(*importe) : TextoEsperado(hallazgo);
}

void AnadirJson(std::string& texto, const Hallazgo& h, std::string_view fichero, const EscritorUtf8& datos) {
  const auto poner = [&](const auto&... partes) { ((texto += std::string_view(partes)), ...); };
  poner("{");
  if (h.antes) {
    poner(R"("anterior":{"fecha":")", h.antes->fecha, R"(","fichero":")");
    datos.anadirTexto(texto, QString::fromStdString(h.antes->fichero));
    poner(R"(","registro":)", std::to_string(h.antes->registro), "},");
  }
  poner(R"("campo":")", h.campo != nullptr ? h.campo->nombre : std::string_view());
  poner(R"(","codigo":")", remesa::TextoCodigo(h.codigo));
  poner(R"(","desde":)", std::to_string(h.donde.desde), R"(,"deudor":")");
  datos.anadir(texto, h.deudor);
  poner(R"(","esperado":")");
  AnadirEsperado(texto, h, datos);
  poner(R"(","fichero":")", fichero, R"(","hasta":)", std::to_string(h.donde.hasta), R"(,"mensaje":")");
  AnadirHallazgo(texto, h, datos);
  poner(R"(","nivel":")", TextoNivel(h.codigo).data(), R"(","referencia":")");
  datos.anadir(texto, h.referencia);
  poner(R"(","registro":)", std::to_string(h.registro), R"(,"valor":")");
  datos.anadir(texto, h.valor);
  poner("\"}\n");
}

QString TextoHallazgo(const Hallazgo& hallazgo) {
  return EnQString(AnadirHallazgo, hallazgo);
}

QString TextoVeredicto(std::uint64_t errores, std::uint64_t avisos) {
  QString texto = errores == 0 ? u"Sin errores"_s : TextoCuenta(errores, u"error"_s, u"errores"_s);
  if (avisos > 0) texto += u" · "_s + TextoCuenta(avisos, u"aviso"_s, u"avisos"_s);
  return texto;
}

QString TextoRecuento(std::uint64_t errores, std::uint64_t avisos) {
  const QString deAvisos = TextoCuenta(avisos, u"aviso"_s, u"avisos"_s);
  if (errores == 0) return avisos == 0 ? u"sin errores"_s : u"sin errores y con "_s + deAvisos;
  const QString deErrores = TextoCuenta(errores, u"error"_s, u"errores"_s);
  return avisos == 0 ? deErrores : deErrores + u" y "_s + deAvisos;
}

}  // namespace principal
