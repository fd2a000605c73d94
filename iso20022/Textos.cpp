#include "iso20022/Textos.h"

#include <map>

#include "comunes/plataforma/Formatos.h"
#include "comunes/plataforma/Texto.h"
#include "remesa/TipoFichero.h"

namespace iso20022 {
namespace {

using namespace Qt::StringLiterals;
using N = CodigoNota;

/// En ellos %v es lo que hay; %c, lo que se escribe o se esperaba, y %n, cuántos.
QString Plantilla(N codigo) {
  switch (codigo) {
    case N::NoEsRemesa:
      return u"No es una remesa de adeudos del Cuaderno 19.14. Elija otro fichero."_s;
    case N::FaltaPresentador:
      return u"Falta el registro 01, del que sale la cabecera del mensaje. Pida el fichero otra vez."_s;
    case N::OtroPresentador01:
      return u"Hay otro registro 01, y un mensaje tiene un solo presentador. Lleve cada remesa en su fichero."_s;
    case N::Identificador:
      return u"«%v» no es un identificador correcto. Cópielo del contrato con el banco."_s;
    case N::Fecha:
      return u"«%v» no es un día que exista. Corrija la fecha."_s;
    case N::Iban:
      return u"«%v» no es un IBAN correcto. Compruebe la cuenta con su titular."_s;
    case N::Ccc:
      return u"«%v» no es una cuenta nacional de 20 cifras con sus dígitos de control. Ponga el IBAN, y la "
             "letra A."_s;
    case N::Version:
      return u"La versión «%v» no se conoce: son 19143, 19154 y, entre empresas, 19445."_s;
    case N::EsquemasMezclados:
      return u"Hay adeudos básicos y adeudos entre empresas (19445), que no pueden ir juntos. Lleve cada "
             u"clase en "
             "su fichero."_s;
    case N::Vacio:
      return u"Está vacío y es obligatorio. Rellénelo."_s;
    case N::TipoAdeudo:
      return u"«%v» no es un tipo de adeudo. Ponga FNAL, FRST, OOFF o RCUR."_s;
    case N::Importe:
      return u"«%v» no es un importe de once cifras mayor que cero. Corríjalo o elimine el adeudo."_s;
    case N::Barras:
      return u"«%v» empieza o acaba en «/», o tiene «//», y el banco lo rechaza. Cámbielo de acuerdo con "
             u"quien lo "
             "use."_s;
    case N::AdeudoSinCabecera:
      return u"El adeudo está antes que cualquier cabecera 02: no se sabe de qué acreedor es."_s;
    case N::NumeroDato:
      return u"El número de dato «%v» no existe, y no se sabe qué registro es. El adeudo que le precede "
             u"tampoco se "
             "puede escribir, que podría ser parte de él."_s;
    case N::ReferenciasDistintas:
      return u"Este registro no lleva las referencias del adeudo que le precede: no se sabe de cuál es. "
             u"Póngaselas "
             "o elimínelo."_s;
    case N::OpcionalRepetido:
      return u"El adeudo tiene ya un registro como este. Elimine uno."_s;
    case N::EntidadOriginal:
      return u"«%v» no vale: solo puede decir SMNDA, que la cuenta ha cambiado."_s;
    case N::SinAdeudos:
      return u"No queda ningún adeudo que escribir."_s;
    case N::DemasiadosMensajes:
      return u"Harían falta %n mensajes y caben %c. Ponga más adeudos en cada uno."_s;
    case N::Caracteres:
      return u"El juego de SEPA no admite algunos caracteres: se escribe «%c»."_s;
    case N::CccConvertido:
      return u"La cuenta es un CCC y se escribe su IBAN, %c. La norma no deja calcularlo: pídalo al deudor."_s;
    case N::Balanza:
      return u"El registro de balanza de pagos no se escribe: no tiene uso desde 2014."_s;
    case N::IdentificacionSinCodigo:
      return u"La identificación no se escribe: «%v» no empieza por A y un BIC, ni por I o J y un código."_s;
    case N::IdentificacionBic:
      return u"La identificación no se escribe: «%v» no es un BIC en esta versión."_s;
    case N::IdentificacionEmisor:
      return u"El emisor «%v» no se escribe: un BIC no lo lleva."_s;
    case N::IdentificacionTipo:
      return u"El tipo «%v» no va con la letra del código. Vale la letra, como si fuera %c."_s;
    case N::CodigoProposito:
      return u"«%v» no se escribe: no es un código de cuatro mayúsculas o cifras."_s;
    case N::Provincia:
      return u"La provincia «%v» no se escribe: pasa de 35 caracteres."_s;
    case N::CuentaConCambio:
      return u"La cuenta original, %v, no se escribe: SMNDA ya dice que ha cambiado."_s;
    case N::OpcionalVacio:
      return u"El registro no dice nada y no se escribe."_s;
    case N::Libre:
      return u"Hay datos en un espacio sin uso, que no se escriben: «%v»."_s;
    case N::RegistroDesconocido:
      return u"Los registros «%v» no existen en la norma: este no se escribe."_s;
    case N::VariosAcreedores:
      return u"Hay %n acreedores. Asegúrese de que su banco los admite en un mismo mensaje."_s;
    case N::SinBic:
      return u"Falta el BIC y la cuenta es de fuera del Espacio Económico Europeo: el banco puede rechazarlo."_s;
    case N::SinDireccion:
      return u"No se escribe ninguna dirección y la cuenta es de fuera del Espacio Económico Europeo: el "
             u"banco "
             "puede rechazarlo."_s;
    case N::DireccionNoEscrita:
      return u"La dirección no se escribe: «%v»."_s;
    case N::DireccionSinPartir:
      return u"La dirección no se escribe, porque no se ve cuál es la localidad o falta el país: «%v»."_s;
    case N::BicNoValido:
      return u"«%v» no es un BIC en esta versión: se escribe %c."_s;
    case N::SinReferencia:
      return u"El adeudo no tiene referencia: se escribe %c."_s;
    case N::OtroPresentador:
      return u"El presentador «%v» no es el de la primera remesa, «%c», que es el que se escribe."_s;
    case N::SoloLF:
      return u"Hay líneas que acaban solo en LF (%v, la primera la %n) y se han separado."_s;
    case N::AdeudosTrasTotales:
      return u"Hay adeudos detrás de los totales (%v, desde el registro %n): van con el último 02."_s;
    case N::RegistroLargo:
      return u"El registro tiene %c posiciones y lo que pasa de 600 no se escribe: «%v»."_s;
    case N::ClaseCuenta:
      return u"La letra de la cuenta es «%v» y no A ni B: se toma por un IBAN."_s;
    case N::BicAcreedor:
      return u"El BIC de la entidad %v en los ajustes, «%c», no lo es en esta versión: se escribe NOTPROVIDED."_s;
  }
  return {};
}

QString Numero(std::uint64_t numero) {
  return comunes::FormatoNumero(static_cast<double>(numero), 0);
}

QString Abreviado(QString texto) {
  constexpr qsizetype kMaximo = 100;
  if (texto.size() > kMaximo) texto = texto.first(kMaximo) + u'…';
  return texto;
}

QString Completar(const QString& plantilla, const QString& valor, const QString& cambio,
                  std::uint64_t cuenta) {
  QString texto;
  for (qsizetype i = 0; i < plantilla.size(); ++i) {
    const QChar marca = plantilla[i] == u'%' && i + 1 < plantilla.size() ? plantilla[i + 1] : QChar();
    if (marca == u'v')
      texto += Abreviado(valor);
    else if (marca == u'c')
      texto += Abreviado(cambio);
    else if (marca == u'n')
      texto += Numero(cuenta);
    else
      texto += plantilla[i];
    if (marca == u'v' || marca == u'c' || marca == u'n') ++i;
  }
  return texto;
}

QString Datos(const std::string& bytes) {
  return comunes::DesdeWindows1252(bytes);
}

/// «PEÑA» por «PENA», «LÓPEZ» por «LOPEZ»
QString Ejemplos(const Nota& nota) {
  const QStringList antes = Datos(nota.valor).split(u'\n');
  const QStringList despues = Datos(nota.cambio).split(u'\n');
  QStringList ejemplos;
  for (qsizetype i = 0; i < antes.size() && i < despues.size(); ++i)
    ejemplos += u"«%1» queda «%2»"_s.arg(Abreviado(antes[i]), Abreviado(despues[i]));
  return ejemplos.join(u", "_s);
}

QString Resumen(const Nota& nota) {
  if (nota.codigo == N::Caracteres)
    return u"Campos con caracteres que el juego de SEPA no admite, cambiados uno por uno: %1. Por ejemplo, %2."_s
        .arg(Numero(nota.cuenta), Ejemplos(nota));
  return u"Direcciones que, con lo elegido, no se escriben: %1."_s.arg(Numero(nota.cuenta));
}

bool EsResumen(const Nota& nota) {
  return nota.registro == 0 && (nota.codigo == N::Caracteres || nota.codigo == N::DireccionNoEscrita);
}

QString PlantillaAviso(CodigoAviso codigo) {
  switch (codigo) {
    case CodigoAviso::SinSitio:
      return u"No tiene sitio en los registros y se pierde: «%v»."_s;
    case CodigoAviso::Cortado:
      return u"No cabe y se corta: de «%v» queda «%c»."_s;
    case CodigoAviso::Caracteres:
      return u"Lleva caracteres que los registros no tienen: de «%v» queda «%c»."_s;
    case CodigoAviso::Importe:
      return u"No es un importe en euros con dos decimales a lo más, y el adeudo queda con importe cero: «%v»."_s;
    case CodigoAviso::Repetido:
      return u"Está repetido y solo cabe el primero, se pierde «%v»."_s;
    case CodigoAviso::Recuento:
      return u"Dice %v y el mensaje lleva %c: puede estar incompleto."_s;
    case CodigoAviso::OtroValor:
      return u"Dice «%v» y en los registros es siempre %c."_s;
    case CodigoAviso::Fecha:
      return u"No es un día que exista, y queda en blanco: «%v»."_s;
    case CodigoAviso::CambioVacio:
      return u"Dice que el mandato ha cambiado y no en qué: no queda nada de ello."_s;
  }
  return {};
}

}  // namespace

QString TextoNota(const Nota& nota) {
  if (EsResumen(nota)) return Resumen(nota);
  QString texto = Completar(Plantilla(nota.codigo), TextoValor(nota), TextoCambio(nota), nota.cuenta);
  if (nota.codigo == N::NoEsRemesa) {
    const std::string_view que = remesa::NombreTipo(remesa::TipoDe(nota.valor));
    texto = u"No es una remesa de adeudos del Cuaderno 19.14, sino %1."_s.arg(
        QString::fromUtf8(que.data(), static_cast<qsizetype>(que.size())));
  }
  const bool conDigitos = nota.codigo == N::Identificador || nota.codigo == N::Iban;
  if (conDigitos && !nota.cambio.empty())
    texto += u" Si lo demás está bien, sus dígitos de control son %1."_s.arg(TextoCambio(nota));
  return texto;
}

QString TextoAviso(const AvisoLectura& aviso) {
  if (aviso.codigo == CodigoAviso::Importe && aviso.valor.isEmpty())
    return u"No lo dice, y el adeudo queda con importe cero."_s;
  return Completar(PlantillaAviso(aviso.codigo), aviso.valor, aviso.cambio, 0);
}

QString TextoValor(const Nota& nota) {
  return Datos(nota.valor).section(u'\n', 0, 0);
}

QString TextoCambio(const Nota& nota) {
  return Datos(nota.cambio).section(u'\n', 0, 0);
}

QString TextoNivel(CodigoNota codigo) {
  return EsError(codigo) ? u"error"_s : u"aviso"_s;
}

void ResumenAvisos::dar(const AvisoLectura& aviso) {
  if (++cuantos_[{aviso.elemento, aviso.codigo}] <= kPrimeros)
    primeros_ += u"%1 (línea %2): %3"_s.arg(aviso.elemento).arg(aviso.linea).arg(TextoAviso(aviso));
}

QStringList ResumenAvisos::lineas() const {
  QStringList lineas = primeros_;
  for (const auto& [clave, veces] : cuantos_)
    if (veces > kPrimeros)
      lineas += (veces - kPrimeros == 1 ? u"%1: %2 vez más como estas."_s : u"%1: %2 veces más como estas."_s)
                    .arg(clave.first, Numero(veces - kPrimeros));
  return lineas;
}

QStringList ResumirAvisos(const std::vector<AvisoLectura>& avisos) {
  ResumenAvisos resumen;
  for (const AvisoLectura& aviso : avisos)
    resumen.dar(aviso);
  return resumen.lineas();
}

}  // namespace iso20022
