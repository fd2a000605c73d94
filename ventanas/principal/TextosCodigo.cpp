#include "ventanas/principal/TextosCodigo.h"

#include "remesa/TipoFichero.h"
#include "remesa/Validez.h"

namespace principal {
namespace {

using C = remesa::CodigoHallazgo;
using remesa::Hallazgo;
using remesa::ValorCampo;

constexpr Plantilla kRecalculo =
    "Se recalculan al importar, insertar o eliminar. Si hay varios bloques el programa los deja corridos de "
    "uno a otro, salvo que se conserven los acreedores y las fechas.";

constexpr Plantilla kFinesAlGuardar = "El programa lo lee bien. Al guardar la remesa quedará con CR LF.";

Textos TextosDeCodigo(C codigo) {
  switch (codigo) {
    case C::Longitud:
      return {"Tiene %v posiciones y no %e.", "%e posiciones",
              "Pida el registro otra vez: al guardar, lo que falta se completa con blancos y lo que sobra se "
              "pierde."};
    case C::SoloLF:
      return {
          "Líneas que acaban solo en LF: %v, y la primera es la %o. El programa toma cada una y la siguiente "
          "por un solo registro, y se perderían adeudos.",
          "CR LF al final de cada línea",
          "Pida el fichero con finales de línea CR LF. Aquí se han separado para mirar lo demás."};
    case C::SinRegistros:
      return {"El fichero está vacío.", "registros del Cuaderno 19.14",
              "Compruebe que es el fichero que quería y que se copió entero."};
    case C::NoEsRemesa:
      return {"El fichero no es una remesa del Cuaderno 19.14: empieza por «%v».", "%e al principio",
              "No se ha mirado nada más. Elija otro fichero."};
    case C::DeVuelta:
      return {"El fichero no es una remesa: es de adeudos rechazados antes del cobro (registro «%v»).",
              "una remesa que se presente al banco",
              "Lo manda el banco. Ábralo en Herramientas, Devoluciones…, o con q19 devoluciones."};
    case C::Utf8:
      return {
          "El fichero está en UTF-8: lo muestra «%v», en el registro %o. Cada letra con acento ocupa dos "
          "posiciones y corre lo que la sigue.",
          "texto ANSI (Windows-1252), y sin acentos",
          "Pida el fichero en ANSI (Windows-1252) y sin acentos, que la norma no admite. Aquí se ha leído "
          "como UTF-8 para mirar lo demás."};
    case C::CodigoDesconocido:
      return {"El código de registro «%v» no existe en la norma.", "%e",
              "La importación descarta el registro: si traía un adeudo, pídalo otra vez."};
    case C::Version:
      return {"La versión «%v» no es la de estos adeudos.", "%e",
              "Pida la remesa en el Cuaderno 19.14: aquí solo se unen las de esa versión."};
    case C::NumeroDato:
      return {"El número de dato «%v» no es de este registro.", "%e",
              "Corríjalo o pida el registro otra vez: un 03 que no lleve 003 no suma en los totales."};
    case C::FueraDeOrden:
      return {"Aquí no puede ir un registro %v.", "%e",
              "El orden es 01, por cada acreedor bloques de 02, adeudos y 04, luego su 05, y al final 99. Un "
              "adeudo es un 003 y, quizá, un 004, un 005 y un 006. Quite el registro o pida el fichero en "
              "orden."};
    case C::FaltaRegistro:
      return {"El fichero acaba antes de tiempo y falta: %e.", "%e", "Puede estar cortado: pídalo otra vez."};
    case C::VersionesMezcladas:
      return {"La versión «%v» no es la de los demás registros del fichero. Los que la llevan: %o.", "%e",
              "Los adeudos básicos (19143) y los de empresas (19445) van en ficheros distintos: sepárelos."};
    case C::ObligatorioVacio:
      return {"Está vacío y es obligatorio.", "un valor", "Rellénelo."};
    case C::NoNumerico:
      return {"«%v» no son solo cifras.", "solo cifras", "Quite lo que no sea una cifra."};
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
    case C::SinAlinear:
      return {"«%v» no empieza donde empieza el campo.", "el dato a la izquierda y blancos detrás",
              "Córralo hasta la primera posición del campo."};
    case C::FueraDeSEPA:
      return {"La cuenta «%v» es de un país en el que no se cobran adeudos SEPA.",
              "una cuenta de la zona SEPA", "Pida al deudor otra cuenta o cóbrele de otro modo."};
    case C::BicNoEspanol:
      return {"El banco «%v» no es español y la cuenta sí.", "un BIC con %e en la quinta y la sexta posición",
              "Déjelo en blanco, que con una cuenta española no hace falta, o corríjalo."};
    case C::IdentificacionFichero:
      return {"«%v» no es una identificación de fichero.",
              "PRE, fecha AAAAMMDD, hora HHMMSS, cinco cifras de milésimas y hasta 13 posiciones suyas",
              "Pida el fichero otra vez: el banco la usa para no admitirlo dos veces."};
    case C::FechaIdentificacion:
      return {"La fecha de «%v» no es la de creación del fichero, que es el %e.",
              "PRE y la fecha de creación, %e", "Ponga en las dos la misma fecha."};
    case C::Proposito:
      return {"«%v» no son cuatro letras mayúsculas.", "cuatro letras de las listas de la norma",
              "Corríjalo o déjelo en blanco."};
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
    case C::Secuencia:
      return {"El tipo «%v» no va con el del adeudo del registro %o, que es del mismo mandato.",
              "OOFF, el único adeudo de su mandato, FRST, el primero, y FNAL, el último",
              "Compruebe qué adeudos son de ese mandato y cuál sobra. En una serie, RCUR vale para todos."};
    case C::OtraEntidad:
      return {"La cuenta anterior, «%v», es de otro banco que la de ahora.",
              "SMNDA en la entidad original, y la cuenta original en blanco",
              "La cuenta original solo se da si no cambia de banco: bórrela y ponga SMNDA."};
    case C::SmndaConCuenta:
      return {"Lleva SMNDA y, además, la cuenta anterior, «%v».", "una de las dos cosas",
              "Deje SMNDA si el deudor cambió de banco, o la cuenta si no."};
    case C::NadaCambia:
      return {"«%v» es lo mismo que vale ahora.", "solo lo que cambia, con lo que decía antes",
              "Bórrelo: el 006 dice lo que había antes de cambiar el mandato."};
    case C::MismoTitular:
      return {"«%v» es quien ya figura en el adeudo.", "vacío, salvo que sea otro",
              "Bórrelo con su identificación: solo se da si es otra persona."};
    case C::BloqueRepetido:
      return {"El registro %o abre otro bloque con este acreedor, esta fecha y esta cuenta.",
              "un solo bloque para los tres", "Junte los adeudos de los dos en uno."};
    case C::MarcaDeBytes:
      return {"El fichero empieza con una marca de orden de bytes.", "ninguna marca",
              "Con ella el programa no lo reconoce: pídalo como texto ANSI (Windows-1252), sin marca."};
    case C::SoloCR:
      return {"Las líneas acaban solo en CR.", "CR LF al final de cada línea", kFinesAlGuardar};
    case C::FinesMezclados:
      return {"Las líneas no acaban todas igual: %v.", "CR LF al final de cada línea", kFinesAlGuardar};
    case C::SinUltimoFin:
      return {"La última línea no tiene fin de línea.", "CR LF al final de cada línea", kFinesAlGuardar};
    case C::EntreEmpresas:
      return {
          "El fichero es de adeudos entre empresas (B2B), versión %v: otro esquema, con su contrato y sus "
          "reglas en el banco.",
          "19143, si eran adeudos básicos",
          "No es un error: llévelo al banco como está. Lo demás se ha comprobado igual, pues los campos son "
          "los mismos."};
    case C::RegistroSinUso:
      return {"Es un registro de balanza de pagos, sin uso desde 2014.", "ningún registro 005", "Elimínelo."};
    case C::OpcionalVacio:
      return {"El registro 004 no da ni el último acreedor ni el titular.", "alguno de los dos",
              "Elimínelo: no dice nada."};
    case C::Caracteres:
      return {"Desde la posición %p hay caracteres que no se admiten: %v.",
              "letras sin acento, cifras, blanco y / - ? : ( ) . , ' +",
              "Escríbalo de otro modo: el banco puede cambiarlos o rechazarlos."};
    case C::Direccion:
      return {"Lleva una dirección sin estructurar.", "la dirección en blanco",
              "El esquema no las admite desde el 15 de noviembre de 2026 y en el Espacio Económico Europeo "
              "no hace falta: bórrela."};
    case C::LibreConDatos:
      return {"Hay datos en un espacio sin uso: «%v».", "blancos",
              "Bórrelos. Si no los puso nadie, puede que el registro esté corrido."};
    case C::Bic:
      return {"«%v» no tiene la forma de un BIC.",
              "8 u 11 letras y cifras, con el país en la quinta y la sexta",
              "Corríjalo o, si la cuenta es del Espacio Económico Europeo, déjelo en blanco."};
    case C::FechaAntigua:
      return {"La fecha, %v, es de hace más de un siglo.", "una fecha de estos años", "Corrija el año."};
    case C::PaisIncorporado:
      return {
          "La cuenta «%v» es de un país que entró en la zona SEPA hace poco: no todos sus bancos admiten "
          "adeudos.",
          "una cuenta cuyo banco los admita", "Pregunte a su banco si puede cobrarle."};
    case C::DigitosCcc:
      return {"Los dígitos de control de la cuenta nacional no cuadran: «%v».",
              "los del banco y los de la cuenta, en la novena y la décima de sus 20 cifras",
              "Compruebe la cuenta con su titular. Algunas muy antiguas son así y están bien."};
    case C::CuentaNacional:
      return {"«%v» es una cuenta nacional (CCC), que muchos bancos ya no admiten.",
              "un IBAN y la letra A delante", "Pida el IBAN al deudor: se lo da su banco."};
    case C::BicDeOtroPais:
      return {"El banco «%v» no es del país de la cuenta.", "un BIC con %e en la quinta y la sexta posición",
              "Compruébelo. En el Espacio Económico Europeo puede quedar en blanco."};
    case C::FaltaDireccion:
      return {"Falta la dirección del deudor, y su cuenta es de fuera del Espacio Económico Europeo.",
              "la dirección del deudor",
              "Su banco la pedirá. Desde el 15 de noviembre de 2026 ha de ser estructurada, que en este "
              "fichero no cabe: mande ese adeudo en XML (pain.008)."};
    case C::PropositoRaro:
      return {"«%v» no está en la lista de la norma.", "un código de la lista",
              "Puede ser de las listas posteriores. Si no le consta, déjelo en blanco."};
    case C::NumeroFiscal:
      return {"El control del número fiscal «%v» no es el suyo.", "que acabe en %e",
              "Compruébelo con el deudor: alguna letra o cifra está mal."};
    case C::OtroBanco:
      return {"El banco «%v» no es el de la cuenta, que es de la entidad %e.", "el BIC de la entidad %e",
              "Déjelo en blanco, que con una cuenta española no hace falta, o corríjalo."};
    case C::SinOrdenar:
      return {"Desde aquí los adeudos no van por orden de referencia: el anterior es «%e».",
              "una referencia no menor que «%e»",
              "La norma dice que deberán ir en orden, aunque los bancos rara vez lo miran. Es lo normal tras "
              "unir varias remesas: si el suyo no lo admite, ordénelos."};
    case C::ReferenciaRepetida:
      return {"La referencia «%v» ya está en el registro %o.", "una referencia que no se repita",
              "Compruebe si es el mismo adeudo. Si lo es, elimine uno."};
    case C::CobroDoble:
      return {
          "El mandato «%v» ya cobra ese importe, con esa fecha, en el registro %o: puede cobrarse dos "
          "veces.",
          "un solo cobro", "Compruebe si es el mismo adeudo. Si lo es, elimine uno."};
    case C::MandatoDosCuentas:
      return {"El mismo mandato tiene otra cuenta en el registro %o.", "la misma cuenta",
              "Compruebe cuál es la buena. Un cambio de cuenta se comunica con un registro 006."};
    case C::FirmaPosterior:
      return {"El mandato se firmó el %v, después del cobro, que es el %e.", "una fecha no posterior al %e",
              "Corrija la fecha de firma o la de cobro."};
    case C::Frst:
      return {"FRST ya no hace falta en el primer adeudo.", "%e",
              "Desde noviembre de 2016 basta RCUR: cámbielo si su banco lo rechaza."};
    case C::CobroPasado:
      return {"La fecha de cobro, %v, ya ha pasado.", "%e o un día hábil posterior",
              "Ponga la nueva fecha en la cabecera 02 y en su 04."};
    case C::CobroFinDeSemana:
      return {"La fecha de cobro, %v, es sábado o domingo.", "un día hábil: el siguiente es el %e",
              "El banco cobrará otro día: ponga la fecha que convenga en la cabecera 02 y en su 04."};
    case C::CobroFestivo:
      return {"La fecha de cobro, %v, es fiesta del sistema de pagos europeo.",
              "un día hábil: el siguiente es el %e",
              "El banco cobrará otro día: ponga la fecha que convenga en la cabecera 02 y en su 04."};
    case C::CobroHoy:
      return {"La fecha de cobro es hoy, %v: un adeudo se presenta, a más tardar, la víspera.",
              "%e o un día hábil posterior", "Ponga la nueva fecha en la cabecera 02 y en su 04."};
    case C::FirmaFutura:
      return {"El mandato se firmó el %v, después de hoy.", "una fecha no posterior al %e",
              "Sin mandato firmado no se puede presentar: corrija la fecha."};
    case C::CreacionFutura:
      return {"El fichero se creó el %v, después de hoy.", "una fecha no posterior al %e",
              "Corrija la fecha, también en la identificación del fichero."};
    case C::CobroLejano:
      return {"La fecha de cobro, %v, es de dentro de más de 14 meses.", "una fecha más cercana",
              "Compruebe el año."};
    case C::FirmaCaducada:
      return {"El mandato es para un solo adeudo y se firmó el %v, más de 36 meses antes del cobro.",
              "un mandato de hace menos de 36 meses",
              "Un mandato sin adeudos caduca a los 36 meses: pida otro."};
    case C::EntidadReceptora:
      return {"La entidad receptora, %v, no es el banco de ninguna cuenta de acreedor.", "%e",
              "El fichero se entrega en el banco de la cuenta en que se abona."};
    case C::CuentaPropia:
      return {"La cuenta del deudor, «%v», es la del acreedor.", "otra cuenta",
              "Compruebe de quién es: se cobraría a sí mismo."};
    case C::DosMandatos:
      return {
          "La misma cuenta, importe y concepto están ya, con otro mandato, en el registro %o: puede cobrarse "
          "dos veces.",
          "un solo cobro", "Compruebe si es el mismo adeudo. Si son dos de la misma familia, está bien."};
    case C::IdentificacionUsada:
      return {
          "La identificación «%v» la lleva ya otro fichero: «%f» (%d, registro %r).",
          "una identificación que no se haya usado",
          "Si aquel se envió, el banco rechazará este: ponga en la cabecera la fecha y la hora de ahora."};
    case C::YaEnviado:
      return {
          "Puede que ya se enviara: la misma referencia, mandato e importe están en «%f» (%d, registro %r).",
          "un adeudo que no se haya enviado", "Compruebe si es el mismo y, si lo es, elimínelo."};
    case C::CobroCercano:
      return {
          "El mismo mandato, importe y concepto se cobran, a menos de 20 días, en «%f» (%d, registro %r).",
          "un solo cobro", "Compruebe si es el mismo adeudo y, si lo es, elimínelo."};
    case C::MandatoUnico:
      return {"El mandato era para un solo adeudo (OOFF) y ya se usó: «%f» (%d, registro %r).",
              "un mandato sin usar",
              "Un mandato OOFF solo vale una vez: pida otro, o compruebe si el adeudo ya se envió."};
    case C::TrasUltimo:
      return {"El último adeudo de este mandato (FNAL) ya se envió: «%f» (%d, registro %r).",
              "ningún adeudo después del FNAL",
              "Con el FNAL se acabó el mandato: pida otro, o compruebe si aquel tipo estaba bien."};
    case C::YaHuboPrimero:
      return {"FRST es el primer adeudo de un mandato, y de este hay otro antes: «%f» (%d, registro %r).",
              "RCUR", "Póngale RCUR, que vale para todos los de la serie."};
    case C::MandatoSinUso:
      return {"El mandato lleva más de 36 meses sin usarse. La última vez: «%f» (%d, registro %r).",
              "un mandato usado en los últimos 36 meses",
              "Un mandato sin adeudos caduca a los 36 meses: pida otro al deudor."};
    case C::CuentaCambiada:
      return {"La cuenta no es la del último adeudo de este mandato, «%f» (%d, registro %r).", "%e",
              "Compruebe cuál es la buena. Un cambio de cuenta se comunica con un registro 006."};
    case C::YaDevuelto:
      return {"Este adeudo ya se envió, en «%f» (%d, registro %r), y fue %m.", "un adeudo nuevo",
              "Si lo presenta otra vez a sabiendas, está bien."};
    case C::YaGuardado:
      return {"Este fichero ya está guardado en «%f» (%d).", "una remesa que no se haya guardado antes",
              "Si aquel se envió, no envíe este: el banco lo rechazaría. Aquí no se comparan entre sí."};
  }
  return {"", "", ""};
}

/// Lo que un XML puede llevar y un registro no.
constexpr Plantilla kPorXml =
    "Desde el 15 de noviembre de 2026 ha de ser estructurada, que en este fichero no cabe: mande ese adeudo "
    "en "
    "XML (pain.008).";

Plantilla QueNoEsRemesa(std::string_view principio) {
  if (principio == "UTF-16") return "El fichero está en UTF-16, y una remesa son textos ANSI (Windows-1252).";
  switch (remesa::TipoDe(principio)) {
    case remesa::TipoFichero::Anterior:
      return "El fichero es del Cuaderno 19 antiguo, anterior a SEPA: empieza por «%v».";
    case remesa::TipoFichero::Transferencias:
      return "El fichero es una orden de transferencias del Cuaderno 34: empieza por «%v».";
    default:
      return "El fichero no es una remesa del Cuaderno 19.14: empieza por «%v».";
  }
}

/// El mandato no está en ninguno de los ficheros de antes, que llegan hasta el que se dice.
constexpr Plantilla kNuncaUsado =
    "El mandato se firmó hace más de 36 meses y no está en ningún fichero desde «%f» (%d, registro %r).";

/// Los ficheros que no se presentan, por la primera cifra de sus registros.
void PonerDeVuelta(Textos& textos, char cifra) {
  if (cifra == '2')
    textos.que = "El fichero no es una remesa: es de adeudos devueltos después del cobro (registro «%v»).";
  if (cifra != '3') return;
  textos.que =
      "El fichero no es una remesa: es de solicitudes de revocación o de cancelación (registro «%v»).";
  textos.hacer = "Se lleva al banco como está. No se ha mirado nada más.";
}

bool EsDeVuelta(std::string_view codigo) {
  return codigo.size() == 2 && codigo[0] >= '1' && codigo[0] <= '3' && codigo[1] >= '1' && codigo[1] <= '5';
}

void PonerVacio(Textos& textos, const Hallazgo& h) {
  switch (h.campo != nullptr ? h.campo->valor : ValorCampo::Libre) {
    case ValorCampo::Bic:
      textos.que = "Está vacío y la cuenta es de fuera del Espacio Económico Europeo.";
      textos.esperado = "el BIC del banco del deudor";
      break;
    case ValorCampo::Pais:
      textos.que = "Está vacío y es obligatorio si se da la dirección.";
      textos.esperado = "las dos letras del país";
      break;
    case ValorCampo::TipoIdentificacion:
      textos.que = "Está vacío y es obligatorio si se da la identificación.";
      textos.esperado = "%e";
      break;
    case ValorCampo::CodigoIdentificacion:
      textos.que = "Está vacío y es obligatorio si se da el tipo de identificación.";
      textos.esperado = "un código que empiece por %e";
      break;
    default:
      break;
  }
}

void PonerIban(Textos& textos, std::string_view iban) {
  using D = remesa::DefectoIban;
  const D defecto = remesa::DefectoDeIban(iban);
  if (defecto == D::Digitos) return;
  textos.esperado = "%e";
  if (defecto == D::Longitud) textos.que = "«%v» no tiene la longitud de los IBAN de su país.";
  if (defecto == D::Forma) textos.que = "«%v» no tiene la forma de los IBAN de su país.";
  if (defecto != D::Pais) return;
  textos.que = "«%v» no empieza por ningún país que tenga IBAN.";
  textos.esperado = "las dos letras de un país con IBAN";
}

void PonerIdentificacion(Textos& textos, const Hallazgo& h) {
  if (h.esperado.empty()) {
    textos.que = "«%v» es un emisor que no va con ningún código.";
    textos.esperado = "vacío, salvo con un código que no sea un BIC";
  } else if (h.valor.size() == 1 && h.esperado == h.valor) {
    textos.que = "Tras la letra «%v» falta el código.";
    textos.esperado = "%e y el código";
  } else if (h.esperado.starts_with("A+")) {
    textos.que = "«%v» empieza por A y no sigue un BIC.";
  }
}

}  // namespace

/// Donde el dato esperado no se puede decir, o el caso tiene su propio texto.
Textos TextosDe(const Hallazgo& h) {
  Textos textos = TextosDeCodigo(h.codigo);
  const bool sinDato = h.esperado.empty();
  switch (h.codigo) {
    case C::NoEsRemesa:
      textos.que = QueNoEsRemesa(h.valor);
      break;
    case C::DeVuelta:
      PonerDeVuelta(textos, h.valor.front());
      break;
    case C::CodigoDesconocido:
      if (EsDeVuelta(h.valor))
        textos.que = "Un registro «%v» es de lo que el banco devuelve o de lo que se le pide cancelar.";
      break;
    case C::Version:
      if (h.valor == remesa::kVersion1915) {
        textos.que = "«%v» es la versión del Cuaderno 19.15, que desde 2016 es el 19.14.";
        textos.hacer = "Pida la remesa en el Cuaderno 19.14: aquí solo se unen las de esa versión.";
      }
      break;
    case C::FueraDeOrden:
      if (sinDato) textos.esperado = "nada después del 99";
      break;
    case C::ObligatorioVacio:
      PonerVacio(textos, h);
      break;
    case C::NoNumerico:
      if (sinDato) break;
      textos.esperado = "%e";
      textos.hacer = "Ponga uno de los admitidos.";
      break;
    case C::Iban:
      PonerIban(textos, h.valor);
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
      PonerIdentificacion(textos, h);
      break;
    case C::SinAlinear:
      if (sinDato) break;
      textos.que = "«%v» no está completado con ceros a la izquierda.";
      textos.esperado = "%e";
      textos.hacer = "Complételo con ceros a la izquierda.";
      break;
    case C::NadaCambia:
      if (h.campo == nullptr || h.campo->valor != ValorCampo::NumeroDato) break;
      textos.que = "El registro 006 no dice qué cambia del mandato.";
      textos.hacer = "Elimínelo.";
      break;
    case C::Direccion:
      if (sinDato) break;
      textos.que =
          "Lleva una dirección sin estructurar, y la cuenta es de fuera del Espacio Económico Europeo.";
      textos.esperado = "la dirección estructurada";
      textos.hacer = kPorXml;
      break;
    case C::MandatoUnico:
      if (h.valor == "OOFF")
        textos.que =
            "OOFF es el único adeudo de su mandato, y este mandato ya se usó: «%f» (%d, registro %r).";
      break;
    case C::MandatoSinUso:
      if (h.campo != nullptr && h.campo->valor == ValorCampo::Fecha) textos.que = kNuncaUsado;
      break;
    default:
      break;
  }
  return textos;
}

}  // namespace principal
