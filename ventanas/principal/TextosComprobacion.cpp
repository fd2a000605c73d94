#include "ventanas/principal/TextosComprobacion.h"

#include <stdexcept>
#include <string_view>

#include "remesa/Calendario.h"
#include "remesa/SEPA.h"
#include "ventanas/principal/TextosObservacion.h"

namespace principal {

using namespace Qt::StringLiterals;

namespace {

using C = remesa::CodigoHallazgo;
using comunes::EscritorUtf8;
using remesa::Hallazgo;
using remesa::ValorCampo;

/// Un texto que dentro de una cadena de JSON es el mismo: uno que hubiera que escapar no compila.
class Plantilla {
 public:
  // cppcheck-suppress noExplicitConstructor
  consteval Plantilla(const char* texto) : texto_(texto) {
    if (texto_.find_first_of("\"\\\n\t") != std::string_view::npos) throw std::logic_error(texto);
  }
  constexpr operator std::string_view() const { return texto_; }

 private:
  std::string_view texto_;
};

/// Los textos de un código. En ellos %v es lo que hay, %e lo que debería, %o el otro registro y %p la
/// posición.
struct Textos {
  Plantilla que;
  Plantilla esperado;
  Plantilla hacer;
};

constexpr Plantilla kRecalculo =
    "Se recalculan al importar, insertar o eliminar. Si hay varios bloques el programa los deja corridos de "
    "uno a otro: lleve cada bloque en su fichero.";

constexpr Plantilla kFinesAlGuardar = "El programa lo lee bien; al guardar la remesa quedará con CR LF.";

Textos TextosDe(C codigo) {
  switch (codigo) {
    case C::Longitud:
      return {"Tiene %v posiciones y no %e.", "%e posiciones",
              "Pida el registro otra vez: al guardar, lo que falta se completa con blancos y lo que sobra se "
              "pierde."};
    case C::SoloLF:
      return {
          "Líneas que acaban solo en LF: %v; la primera, la %o. El programa toma cada una y la siguiente "
          "por un solo registro, y se perderían adeudos.",
          "CR LF al final de cada línea",
          "Pida el fichero con finales de línea CR LF. Aquí se han separado para mirar lo demás."};
    case C::SinRegistros:
      return {"El fichero está vacío.", "registros del Cuaderno 19.14",
              "Compruebe que es el fichero que quería y que se copió entero."};
    case C::NoEsRemesa:
      return {"El fichero no es una remesa del Cuaderno 19.14: empieza por «%v».", "%e al principio",
              "No se ha mirado nada más. Elija otro fichero."};
    case C::CodigoDesconocido:
      return {"El código de registro «%v» no existe en la norma.", "%e",
              "La importación descarta el registro: si traía un adeudo, pídalo otra vez."};
    case C::Version:
      return {"La versión «%v» no es la del adeudo básico.", "%e",
              "Pida la remesa en el Cuaderno 19.14: aquí solo se unen las de esa versión."};
    case C::NumeroDato:
      return {"El número de dato «%v» no es de este registro.", "%e",
              "Corríjalo o pida el registro otra vez: un 03 que no lleve 003 no suma en los totales."};
    case C::FueraDeOrden:
      return {"Aquí no puede ir un registro %v.", "%e",
              "El orden es 01; por cada acreedor, bloques de 02, adeudos y 04, y luego 05; al final, 99. Un "
              "adeudo es un 003 y, quizá, un 004, un 005 y un 006. Quite el registro o pida el fichero en "
              "orden."};
    case C::FaltaRegistro:
      return {"El fichero acaba antes de tiempo; falta: %e.", "%e", "Puede estar cortado: pídalo otra vez."};
    case C::ObligatorioVacio:
      return {"Está vacío y es obligatorio.", "un valor", "Rellénelo."};
    case C::NoNumerico:
      return {"«%v» no son solo cifras.", "solo cifras",
              "Escriba el número sin signos, completado con ceros a la izquierda."};
    case C::FechaInexistente:
      return {"La fecha «%v» no existe.", "un día que exista, AAAAMMDD", "Corrija la fecha."};
    case C::ImporteCero:
      return {"El importe es cero.", "un importe mayor que cero", "Ponga el importe o elimine el adeudo."};
    case C::Iban:
      return {"«%v» no es un IBAN correcto.", "dígitos de control %e si lo demás está bien",
              "Compruebe la cuenta con su titular: alguna letra o cifra está mal."};
    case C::Ccc:
      return {"«%v» no es una cuenta nacional de 20 cifras.", "20 cifras",
              "Corrija la cuenta o ponga el IBAN y la letra A delante."};
    case C::IdentificadorAcreedor:
      return {"«%v» no es un identificador correcto.", "dígitos de control %e si lo demás está bien",
              "Cópielo del contrato con el banco."};
    case C::FueraDeLista:
      return {"«%v» no es un valor admitido.", "%e", "Ponga uno de los admitidos."};
    case C::Identificacion:
      return {"«%v» no va con el tipo de identificación.", "que empiece por %e",
              "Organización (1): A y el BIC, o I y otro código con su emisor. Persona (2): J y su código."};
    case C::ReferenciasDistintas:
      return {"«%v» no es la del adeudo al que acompaña.", "%e",
              "Un registro opcional repite las dos referencias de su adeudo: póngaselas o elimínelo."};
    case C::OtraCabecera:
      return {"«%v» no es lo que dice la cabecera del bloque.", "%e", "Ponga lo de la cabecera, el 02."};
    case C::TotalImportes:
      return {"Dice %v y los adeudos suman %e.", "%e", kRecalculo};
    case C::TotalAdeudos:
      return {"Dice %v adeudos y hay %e.", "%e", kRecalculo};
    case C::TotalRegistros:
      return {"Dice %v registros y hay %e.", "%e", kRecalculo};
    case C::MarcaDeBytes:
      return {"El fichero empieza con una marca de orden de bytes.", "ninguna marca",
              "Con ella el programa no lo reconoce: pídalo como texto ANSI (Windows-1252), sin marca."};
    case C::SoloCR:
      return {"Las líneas acaban solo en CR.", "CR LF al final de cada línea", kFinesAlGuardar};
    case C::FinesMezclados:
      return {"Las líneas no acaban todas igual: %v.", "CR LF al final de cada línea", kFinesAlGuardar};
    case C::SinUltimoFin:
      return {"La última línea no tiene fin de línea.", "CR LF al final de cada línea", kFinesAlGuardar};
    case C::RegistroSinUso:
      return {"Es un registro de balanza de pagos, sin uso desde 2014.", "ningún registro 005", "Elimínelo."};
    case C::Caracteres:
      return {"En la posición %p no se admite «%v».",
              "letras sin acento, cifras, blanco y / - ? : ( ) . , ' +",
              "Escríbalo de otro modo: el banco puede cambiarlo o rechazarlo."};
    case C::Direccion:
      return {"Lleva una dirección sin estructurar.", "la dirección en blanco",
              "El esquema no las admite desde el 15 de noviembre de 2026: bórrela."};
    case C::LibreConDatos:
      return {"Hay datos en un espacio sin uso: «%v».", "blancos",
              "Bórrelos; si no los puso nadie, puede que el registro esté corrido."};
    case C::Bic:
      return {"«%v» no tiene la forma de un BIC.",
              "8 u 11 letras y cifras, con el país en la quinta y la sexta",
              "Corríjalo o, si la cuenta es española, déjelo en blanco."};
    case C::SinOrdenar:
      return {
          "Desde aquí los adeudos no van por orden de referencia: el anterior es «%e».",
          "una referencia no menor que «%e»",
          "Es lo normal tras unir varias remesas. Si su banco no lo admite, pida los ficheros ordenados."};
    case C::ReferenciaRepetida:
      return {"La referencia «%v» ya está en el registro %o.", "una referencia que no se repita",
              "Compruebe si es el mismo adeudo; si lo es, elimine uno."};
    case C::CobroDoble:
      return {
          "El mandato «%v» ya cobra ese importe, con esa fecha, en el registro %o: puede cobrarse dos "
          "veces.",
          "un solo cobro", "Compruebe si es el mismo adeudo; si lo es, elimine uno."};
    case C::MandatoDosCuentas:
      return {"El mismo mandato tiene otra cuenta en el registro %o.", "la misma cuenta",
              "Compruebe cuál es la buena. Un cambio de cuenta se comunica con un registro 006."};
    case C::FirmaPosterior:
      return {"El mandato se firmó el %v, después del cobro, que es el %e.", "una fecha no posterior al %e",
              "Corrija la fecha de firma o la de cobro."};
    case C::Frst:
      return {"FRST ya no hace falta en el primer adeudo.", "%e",
              "Desde noviembre de 2016 basta RCUR; cámbielo si su banco lo rechaza."};
    case C::CobroPasado:
      return {"La fecha de cobro, %v, ya ha pasado.", "%e o un día hábil posterior",
              "Ponga la nueva fecha en la cabecera 02 y en su 04."};
    case C::CobroFinDeSemana:
      return {"La fecha de cobro, %v, es sábado o domingo.", "un día hábil; el siguiente es el %e",
              "El banco cobrará otro día: ponga la fecha que convenga en la cabecera 02 y en su 04."};
    case C::CobroFestivo:
      return {"La fecha de cobro, %v, es fiesta del sistema de pagos europeo.",
              "un día hábil; el siguiente es el %e",
              "El banco cobrará otro día: ponga la fecha que convenga en la cabecera 02 y en su 04."};
  }
  return {"", "", ""};
}

/// Donde el dato esperado no se puede decir, o el caso tiene su propio texto.
Textos TextosDe(const Hallazgo& h) {
  Textos textos = TextosDe(h.codigo);
  const ValorCampo valor = h.campo != nullptr ? h.campo->valor : ValorCampo::Libre;
  const bool sinDato = h.esperado.empty();
  switch (h.codigo) {
    case C::NoEsRemesa:
      if (h.valor.starts_with("5180"))
        textos.que = "El fichero es del Cuaderno 19 antiguo, anterior a SEPA: empieza por «%v».";
      break;
    case C::Version:
      if (h.valor == "19445") textos.que = "«%v» es la versión de los adeudos entre empresas (B2B).";
      if (h.valor == "19154")
        textos.que = "«%v» es la versión del Cuaderno 19.15, que desde 2016 es el 19.14.";
      break;
    case C::FueraDeOrden:
      if (sinDato) textos.esperado = "nada después del 99";
      break;
    case C::ObligatorioVacio:
      if (valor == ValorCampo::Bic) textos.que = "Está vacío y solo puede estarlo con una cuenta española.";
      if (valor == ValorCampo::Pais) textos.que = "Está vacío y es obligatorio si se da la dirección.";
      if (valor == ValorCampo::TipoIdentificacion)
        textos.que = "Está vacío y es obligatorio si se da la identificación.";
      break;
    case C::Iban:
      if (sinDato)
        textos.esperado = "país, dos cifras y hasta 30 letras y cifras más; 24 en total si es español";
      break;
    case C::IdentificadorAcreedor:
      if (sinDato) textos.esperado = "ES, dos dígitos de control, sufijo de tres cifras y NIF: 16 caracteres";
      break;
    case C::FueraDeLista:
      if (sinDato)
        textos.esperado = h.clase == remesa::ClaseRegistro::Balanza
                              ? Plantilla("las dos letras de un país de ISO 3166 que no sea ES")
                              : Plantilla("las dos letras de un país de ISO 3166");
      break;
    case C::Identificacion:
      if (sinDato) textos.esperado = "vacío, salvo con un código que empiece por I";
      break;
    default:
      break;
  }
  return textos;
}

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

/// Un dato del fichero dentro de una frase: fechas e importes, como se leen; lo demás, abreviado si es largo.
void AnadirEnFrase(std::string& texto, const Hallazgo& h, std::string_view bytes, const EscritorUtf8& datos) {
  constexpr std::size_t kMaximo = 60;
  if (h.codigo == C::TotalImportes)
    texto += TextoEuros(comunes::DesdeWindows1252(bytes).toLongLong()).toStdString();
  else if (h.codigo == C::TotalAdeudos || h.codigo == C::TotalRegistros)
    datos.anadir(texto, SinCeros(bytes));
  else if (h.campo != nullptr && h.campo->valor == ValorCampo::Fecha && remesa::LeerFecha(bytes))
    texto += remesa::FechaQ19(bytes);
  else {
    datos.anadir(texto, bytes.substr(0, kMaximo));
    if (bytes.size() > kMaximo) texto += "…";
  }
}

bool EsLista(C codigo) {
  return codigo == C::CodigoDesconocido || codigo == C::NumeroDato || codigo == C::FueraDeOrden ||
         codigo == C::FaltaRegistro || codigo == C::FueraDeLista || codigo == C::Identificacion;
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
        EsLista(h.codigo) ? Enumerar(texto, h) : AnadirEnFrase(texto, h, h.esperado, datos);
        break;
      case 'o':
        texto += std::to_string(h.otro);
        break;
      default:
        texto += std::to_string(h.donde.desde);
        break;
    }
    plantilla.remove_prefix(marca + 2);
  }
  texto += plantilla;
}

template <class Anadir>
QString EnQString(Anadir&& anadir, const Hallazgo& h) {
  static const EscritorUtf8 datos([](const QString& caracter) { return caracter; });
  std::string texto;
  anadir(texto, h, datos);
  return QString::fromStdString(texto);
}

}  // namespace

QLatin1String TextoNivel(C codigo) {
  return QLatin1String(remesa::EsError(codigo) ? "error" : "aviso");
}

QString TextoValor(const Hallazgo& hallazgo) {
  return comunes::DesdeWindows1252(hallazgo.valor);
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
  const Textos textos = TextosDe(hallazgo);
  Completar(texto, textos.que, hallazgo, datos);
  if (hallazgo.codigo == C::CobroFestivo) {
    texto.pop_back();
    texto.append(" (").append(NombreFiesta(hallazgo.valor)).append(").");
  }
  texto.append(" ").append(textos.hacer);
}

QString TextoHallazgo(const Hallazgo& hallazgo) {
  return EnQString(AnadirHallazgo, hallazgo);
}

QString TextoRecuento(std::uint64_t errores, std::uint64_t avisos) {
  const QString deAvisos = TextoCuenta(avisos, u"aviso"_s, u"avisos"_s);
  if (errores == 0) return avisos == 0 ? u"sin errores"_s : u"sin errores y con "_s + deAvisos;
  const QString deErrores = TextoCuenta(errores, u"error"_s, u"errores"_s);
  return avisos == 0 ? deErrores : deErrores + u" y "_s + deAvisos;
}

}  // namespace principal
