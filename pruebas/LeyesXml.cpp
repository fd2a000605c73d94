#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <set>

#include "Carpeta.h"
#include "RemesasAlAzar.h"
#include "iso20022/Exportacion.h"
#include "iso20022/LecturaMensaje.h"
#include "iso20022/Textos.h"
#include "remesa/Fichero.h"

// La ley de los dos sentidos: lo que se pasa a XML vuelve igual, y lo que se lee de un XML vuelve a salir
// igual.

using namespace pruebas;
using iso20022::Version;

namespace {

/// Un adeudo con lo que le sigue, y el 02 bajo el que está.
struct Cobro {
  std::string cabecera;
  ListaTextos registros;
  std::string grupo() const { return cabecera + registros[0].substr(80, 8); }
};

std::vector<Cobro> Cobros(const ListaTextos& registros) {
  std::vector<Cobro> adeudos;
  std::string cabecera;
  for (const std::string& r : registros) {
    if (r.starts_with("02")) cabecera = r;
    if (r.starts_with("0319143003")) adeudos.push_back({cabecera, {}});
    if (r.starts_with("03")) adeudos.back().registros.push_back(r);
  }
  return adeudos;
}

/// Los adeudos por grupos, cada uno donde apareció el primero.
std::vector<Cobro> PorGrupos(const std::vector<Cobro>& adeudos) {
  std::vector<Cobro> orden;
  std::map<std::string, bool> hechos;
  for (const Cobro& primero : adeudos)
    if (!std::exchange(hechos[primero.grupo()], true))
      std::ranges::copy_if(adeudos, std::back_inserter(orden),
                           [&](const Cobro& a) { return a.grupo() == primero.grupo(); });
  return orden;
}

/// La remesa que harían esos adeudos, en ese orden: los bloques, por acreedor, y los totales de la norma.
ListaTextos Remesa(const std::string& r01, const std::vector<Cobro>& adeudos) {
  ListaTextos r{r01}, acreedores, cabeceras;
  const auto anadir = [](ListaTextos& en, const std::string& t) {
    if (std::ranges::find(en, t) == en.end()) en.push_back(t);
  };
  for (const Cobro& a : adeudos) {
    anadir(acreedores, a.cabecera.substr(10, 35));
    anadir(cabeceras, a.cabecera);
  }
  std::uint64_t importe99 = 0, adeudos99 = 0;
  for (const std::string& acreedor : acreedores) {
    std::uint64_t importe05 = 0, adeudos05 = 0;
    const std::size_t desde = r.size();
    for (const std::string& cabecera : cabeceras) {
      if (cabecera.substr(10, 35) != acreedor) continue;
      std::uint64_t importe = 0, cuantos = 0;
      const std::size_t inicio = r.size();
      r.push_back(cabecera);
      for (const Cobro& a : adeudos)
        if (a.cabecera == cabecera) {
          r.insert(r.end(), a.registros.begin(), a.registros.end());
          importe += std::stoull(a.registros[0].substr(88, 11));
          ++cuantos;
        }
      r.push_back(Registro("04" + acreedor + cabecera.substr(45, 8) + Cifras(importe, 17) +
                           Cifras(cuantos, 8) + Cifras(r.size() - inicio + 1, 10)));
      importe05 += importe;
      adeudos05 += cuantos;
    }
    r.push_back(Registro("05" + acreedor + Cifras(importe05, 17) + Cifras(adeudos05, 8) +
                         Cifras(r.size() - desde + 1, 10)));
    importe99 += importe05;
    adeudos99 += adeudos05;
  }
  r.push_back(Registro("99" + Cifras(importe99, 17) + Cifras(adeudos99, 8) + Cifras(r.size() + 1, 10)));
  return r;
}

/// El primero, sin el banco que la recibe.
ListaTextos SinReceptor(ListaTextos registros) {
  registros.front().replace(158, 8, 8, ' ');
  return registros;
}

constexpr std::array kVersiones{Version::V08, Version::V02};

/// Un mensaje compuesto a mano, con todo lo que los registros pueden guardar, como lo escribiría el programa
/// sin sangrar; los bloques de un acreedor, seguidos.
class Mensajes : public Azar {
 public:
  Mensajes(unsigned semilla, Version version) : Azar(semilla), v02_(version == Version::V02) {}

  std::string mensaje() {
    const bool financiada = unaDe(4);
    const std::string id = financiada ? "FSDD20261105X" : "PRE2026110510203012345REF000000000";
    std::string bloques;
    for (std::size_t a = 0, acreedores = 1 + hasta(2); a < acreedores; ++a)
      for (std::size_t b = 0, fechas = 1 + hasta(2); b < fechas; ++b) {
        const std::string cuenta = cuentaEspanola();
        const std::string acreedor = E("Nm", texto(70)) + (unaDe(2) ? direccion() : "");
        for (std::size_t tipo = hasta(2); tipo < 4; tipo += 1 + hasta(3))
          bloques += bloque(id, a, "2026-11-1" + std::to_string(b), cuenta, acreedor, tipo);
      }
    return "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<Document "
           "xmlns=\"urn:iso:std:iso:20022:tech:xsd:pain.008.001." +
           std::string(v02_ ? "02" : "08") + "\"><CstmrDrctDbtInitn>" +
           E("GrpHdr",
             E("MsgId", id) + E("CreDtTm", financiada ? "2026-11-05T00:00:00" : "2026-11-05T10:20:30") +
                 E("NbOfTxs", std::to_string(adeudos_)) + E("CtrlSum", importe(total_)) +
                 E("InitgPty", E("Nm", texto(70)) + E("Id", E("OrgId", otro("ES08000E77846772", true))))) +
           bloques + "</CstmrDrctDbtInitn></Document>\n";
  }

 private:
  static std::string E(const std::string& nombre, const std::string& dentro) {
    return dentro.empty() ? "" : "<" + nombre + ">" + dentro + "</" + nombre + ">";
  }
  static std::string importe(std::uint64_t centimos) {
    return std::to_string(centimos / 100) + "." + Cifras(centimos % 100, 2);
  }
  static std::string otro(const std::string& id, bool esquema, const std::string& emisor = {}) {
    return E("Othr", E("Id", id) + (esquema ? E("SchmeNm", E("Prtry", "SEPA")) : "") + E("Issr", emisor));
  }
  static std::string acreedor(const std::string& id) { return E("Id", E("PrvtId", otro(id, true))); }
  std::string banco(const std::string& bic) const {
    return E("FinInstnId", bic.empty() ? E("Othr", E("Id", "NOTPROVIDED")) : E(v02_ ? "BIC" : "BICFI", bic));
  }
  std::string direccion() {
    return E("PstlAdr", (unaDe(2) ? E("PstCd", "28001") : "") + E("TwnNm", poblacion()) +
                            (unaDe(2) ? E("CtrySubDvsn", texto(35)) : "") +
                            E("Ctry", unaDe(2) ? "ES" : "CH") + (unaDe(2) ? E("AdrLine", texto(50)) : ""));
  }
  std::string identificacion() {
    if (unaDe(3)) return E("Id", E("OrgId", E(v02_ ? "BICOrBEI" : "AnyBIC", bic())));
    return E("Id", E(unaDe(2) ? "OrgId" : "PrvtId", otro(texto(35), false, unaDe(2) ? texto(35) : "")));
  }
  std::string parte(const std::string& nombre) {
    return unaDe(3) ? E(nombre, E("Nm", texto(70)) + (unaDe(2) ? identificacion() : "")) : "";
  }
  std::string cambio() {
    if (!unaDe(3)) return {};
    return E("AmdmntInd", "true") +
           E("AmdmntInfDtls",
             (unaDe(2) ? E("OrgnlMndtId", referencia()) : "") +
                 E("OrgnlCdtrSchmeId",
                   (unaDe(2) ? E("Nm", texto(70)) : "") + (unaDe(2) ? acreedor("ES53001A12345678") : "")) +
                 E("OrgnlDbtrAcct", E("Id", unaDe(2) ? E("IBAN", cuenta()) : E("Othr", E("Id", "SMNDA")))));
  }
  std::string adeudo(std::uint64_t centimos) {
    return E("DrctDbtTxInf",
             E("PmtId", E("EndToEndId", unaDe(9) ? "NOTPROVIDED" : referencia())) + "<InstdAmt Ccy=\"EUR\">" +
                 importe(centimos) + "</InstdAmt>" +
                 E("DrctDbtTx",
                   E("MndtRltdInf", E("MndtId", referencia()) + E("DtOfSgntr", "2020-02-29") + cambio())) +
                 parte("UltmtCdtr") + E("DbtrAgt", banco(unaDe(2) ? bic() : "")) +
                 E("Dbtr",
                   E("Nm", texto(70)) + (unaDe(3) ? direccion() : "") + (unaDe(2) ? identificacion() : "")) +
                 E("DbtrAcct", E("Id", E("IBAN", cuenta()))) + parte("UltmtDbtr") +
                 (unaDe(3) ? E("Purp", E("Cd", "RENT")) : "") +
                 (unaDe(6) ? "" : E("RmtInf", E("Ustrd", texto(140)))));
  }
  std::string bloque(const std::string& id, std::size_t acreedorDe, const std::string& fecha,
                     const std::string& cuenta, const std::string& quien, std::size_t tipo) {
    std::string adeudos;
    std::uint64_t suma = 0, cuantos = 1 + hasta(4);
    for (std::uint64_t i = 0; i < cuantos; ++i) {
      const std::uint64_t centimos = 1 + hasta(9999999);
      adeudos += adeudo(centimos);
      suma += centimos;
    }
    adeudos_ += cuantos;
    total_ += suma;
    const std::string cola = "-" + std::to_string(++bloques_);
    return E(
        "PmtInf",
        E("PmtInfId", id.substr(0, 35 - cola.size()) + cola) + E("PmtMtd", "DD") +
            E("NbOfTxs", std::to_string(cuantos)) + E("CtrlSum", importe(suma)) +
            E("PmtTpInf", E("SvcLvl", E("Cd", "SEPA")) + E("LclInstrm", E("Cd", "CORE")) +
                              E("SeqTp", std::array{"RCUR", "FRST", "FNAL", "OOFF"}[tipo]) +
                              (unaDe(2) ? E("CtgyPurp", E("Cd", "CASH")) : "")) +
            E("ReqdColltnDt", fecha) + E("Cdtr", quien) + E("CdtrAcct", E("Id", E("IBAN", cuenta))) +
            E("CdtrAgt", banco(cuenta.substr(4, 4) == "2100" ? "CAIXESBBXXX" : "")) + E("ChrgBr", "SLEV") +
            E("CdtrSchmeId", acreedor(acreedorDe == 0 ? "ES08000E77846772" : "ES03000W9614457A")) + adeudos);
  }

  bool v02_;
  std::uint64_t bloques_ = 0, adeudos_ = 0, total_ = 0;
};

class LeyesXml : public Carpeta {
 protected:
  static std::string fichero(const ListaTextos& registros, Azar& azar) {
    std::string bytes;
    const std::string fin = azar.unoDe(std::array{"\r\n", "\r", "\n"});
    for (const std::string& r : registros)
      bytes += r + fin + (azar.unaDe(10) ? "\x1A" + fin : "");
    return bytes;
  }

  /// Exporta lo que haya y da los bytes de cada mensaje.
  ListaTextos exportar(std::unique_ptr<iso20022::Fuente> fuente,
                       const iso20022::OpcionesExportacion& opciones) const {
    std::vector<std::unique_ptr<iso20022::Fuente>> fuentes;
    fuentes.push_back(std::move(fuente));
    iso20022::Exportacion exportacion(std::move(fuentes), opciones);
    std::string errores;
    const auto resumen = exportacion.examinar([&](iso20022::Nota&& nota) {
      if (EsError(nota.codigo)) errores += TextoCodigo(nota.codigo);
    });
    EXPECT_TRUE(resumen->posible) << errores;
    ListaTextos mensajes;
    if (resumen->posible)
      for (const auto& ruta : exportacion.escribir(carpeta_ / "salida.xml"))
        mensajes.push_back(leer(ruta));
    EXPECT_EQ(mensajes.size(), resumen->mensajes);
    return mensajes;
  }

  static iso20022::OpcionesExportacion opciones(Version version, bool compacto) {
    iso20022::OpcionesExportacion o;
    o.version = version;
    o.compacto = compacto;
    o.direcciones = iso20022::Direcciones::Todas;
    o.bicDe = [](std::string_view entidad) { return entidad == "2100" ? "CAIXESBBXXX" : ""; };
    return o;
  }

  iso20022::MensajeLeido importar(const std::string& mensaje) const {
    auto leido = iso20022::LeerMensaje(escribir("leido.xml", mensaje));
    EXPECT_TRUE(leido.rechazo.isEmpty()) << leido.rechazo.toStdString();
    for (const auto& aviso : leido.avisos)
      EXPECT_TRUE(aviso.elemento.startsWith("PmtInf/CdtrAgt/"))
          << aviso.elemento.toStdString() << aviso.valor.toStdString();
    return leido;
  }
};

}  // namespace

TEST_F(LeyesXml, LosRegistrosVuelvenIgual) {
  for (unsigned semilla = 1; semilla <= 30; ++semilla) {
    SCOPED_TRACE(testing::Message() << "semilla " << semilla);
    const bool agrupada = semilla % 2 == 0;
    Remesas azar(semilla, agrupada);
    const auto adeudos = Cobros(azar.remesa());
    Remesas otra(semilla, agrupada);
    const std::string r01 = otra.remesa().front();
    const ListaTextos remesa = Remesa(r01, adeudos);
    const ListaTextos esperada = Remesa(r01, PorGrupos(adeudos));
    if (agrupada) {
      ASSERT_EQ(esperada, remesa);
    }
    const auto ruta = escribir("remesa.Q19", fichero(remesa, azar));
    for (const Version version : kVersiones) {
      const auto o = opciones(version, azar.unaDe(2));
      const ListaTextos mensajes = exportar(std::make_unique<iso20022::FuenteFichero>(ruta), o);
      ASSERT_EQ(mensajes.size(), 1U);
      ASSERT_EQ(SinReceptor(Bytes(importar(mensajes[0]).registros)), SinReceptor(esperada));
      const remesa::ListaRegistros lista = remesa::LeerFichero(ruta);
      ASSERT_EQ(exportar(std::make_unique<iso20022::FuenteLista>(lista), o), mensajes);
    }
  }
}

// También si los adeudos saltan de un acreedor a otro.
TEST_F(LeyesXml, LosRegistrosQueNoEstanEnMemoriaSonLosMismos) {
  const std::string cierre = "</DrctDbtTx>";
  const std::string otro =
      "<CdtrSchmeId><Id><PrvtId><Othr><Id>ES53000A12345678</Id></Othr></PrvtId></Id></CdtrSchmeId>";
  for (unsigned semilla = 1; semilla <= 10; ++semilla) {
    Remesas azar(semilla, false);
    const auto ruta = escribir("remesa.Q19", fichero(azar.remesa(), azar));
    std::string mensaje =
        exportar(std::make_unique<iso20022::FuenteFichero>(ruta), opciones(Version::V08, true)).front();
    std::size_t adeudos = 0;
    for (std::size_t p = 0; (p = mensaje.find(cierre, p)) != std::string::npos; p += cierre.size())
      if (++adeudos % 3 == 0) {
        mensaje.insert(p, otro);
        p += otro.size();
      }
    ASSERT_GT(adeudos, 3U);
    const auto xml = escribir("leido.xml", mensaje);
    const auto leido = iso20022::LeerMensaje(xml);
    std::string esperados;
    for (const std::string_view registro : leido.registros)
      esperados.append(registro).append("\r\n");
    const auto enFichero = iso20022::LeerMensajeEnFichero(xml, carpeta_);
    std::string bytes(enFichero.registros->tamano(), '\0');
    EXPECT_EQ(enFichero.registros->leerEn(0, bytes), bytes.size());
    ASSERT_EQ(bytes, esperados);
    EXPECT_EQ(enFichero.avisos, iso20022::ResumirAvisos(leido.avisos));
  }
}

// Todos los adeudos, en el orden de los grupos, y ningún mensaje con más de los que se piden.
TEST_F(LeyesXml, VariosMensajesSonElMismoRepartido) {
  for (unsigned semilla = 1; semilla <= 20; ++semilla) {
    SCOPED_TRACE(testing::Message() << "semilla " << semilla);
    Remesas azar(semilla, false);
    const ListaTextos remesa = azar.remesa();
    auto o = opciones(Version::V08, false);
    o.cada = 1 + azar.hasta(5);
    ListaTextos esperados, salen;
    for (const Cobro& a : PorGrupos(Cobros(remesa)))
      esperados.insert(esperados.end(), a.registros.begin(), a.registros.end());
    const auto ruta = escribir("remesa.Q19", fichero(remesa, azar));
    std::set<std::string> identificaciones;
    for (const std::string& mensaje : exportar(std::make_unique<iso20022::FuenteFichero>(ruta), o)) {
      const auto leido = importar(mensaje);
      std::size_t cuantos = 0;
      for (const std::string_view r : leido.registros) {
        if (r.starts_with("03")) salen.emplace_back(r);
        if (r.starts_with("01")) identificaciones.emplace(r.substr(123, 35));
        cuantos += r.starts_with("0319143003");
      }
      ASSERT_LE(cuantos, o.cada);
    }
    std::ranges::sort(salen);
    std::ranges::sort(esperados);
    ASSERT_EQ(salen, esperados);
    const std::size_t adeudos = Cobros(remesa).size();
    ASSERT_EQ(identificaciones.size(), (adeudos + o.cada - 1) / o.cada);
  }
}

TEST_F(LeyesXml, LosMensajesVuelvenIgual) {
  for (unsigned semilla = 1; semilla <= 30; ++semilla)
    for (const Version version : kVersiones) {
      SCOPED_TRACE(testing::Message() << "semilla " << semilla);
      Mensajes azar(semilla, version);
      const std::string mensaje = azar.mensaje();
      const auto leido = importar(mensaje);
      ASSERT_EQ(exportar(std::make_unique<iso20022::FuenteLista>(leido.registros), opciones(version, true)),
                ListaTextos{mensaje});
    }
}
