#include <algorithm>

#include "Devueltos.h"
#include "devoluciones/Cotejo.h"
#include "devoluciones/RemesaNueva.h"
#include "iso20022/Exportacion.h"
#include "remesa/Comprobacion.h"

using namespace devoluciones;
using namespace remesa;
using namespace pruebas;
using namespace std::chrono;

namespace {

class Siguiente : public Devueltos {
 protected:
  /// Escribe la remesa y la busca.
  void presentar(const std::string& nombre, const std::vector<std::string>& registros) {
    presentadas_.push_back(escribir(nombre, Unidos(registros)));
  }
  Cotejo cotejar() {
    Cotejo cotejo(lote_);
    for (const auto& ruta : presentadas_)
      cotejo.buscarEn(ruta);
    return cotejo;
  }
  std::vector<std::filesystem::path> presentadas_;
};

TEST_F(Siguiente, BuscaCadaDevolucionEnSuRemesa) {
  const Caso r1{"R1", "M1", "00000000100", "AM04"};
  const std::string otra = "PRE2026122412003000000ACUARIO000000";
  using R = std::vector<std::string>;
  const R noviembre = Fichero('0', {r1}), diciembre = Fichero('0', {r1}, "20261231", otra);
  const struct {
    const char* que;
    R devuelto;
    std::vector<R> presentadas;
    EstadoCotejo estado;
    std::string donde;  // el fichero y el registro hallados
  } casos[] = {
      {"por el fichero original",
       Fichero('2', {r1}),
       {diciembre, noviembre},
       EstadoCotejo::Hallada,
       "1.Q19, registro 3"},
      {"sin él, por la fecha",
       Fichero('2', {r1}, "20261231", ""),
       {diciembre, noviembre},
       EstadoCotejo::Hallada,
       "0.Q19, registro 3"},
      {"si no está, por lo demás",
       Fichero('2', {r1}, "20261201", "PRE-OTRO"),
       {noviembre},
       EstadoCotejo::Hallada,
       "0.Q19, registro 3"},
      {"dos iguales en una remesa", Fichero('2', {r1}), {Fichero('0', {r1, r1})}, EstadoCotejo::Ambigua, ""},
      {"sin la fecha de cobro, la que no es de después",
       Fichero('2', {r1}, "00000000", ""),
       {diciembre, noviembre},
       EstadoCotejo::Hallada,
       "1.Q19, registro 3"},
      {"en dos remesas sin saber cuál",
       Fichero('2', {r1}, "00000000", ""),
       {Fichero('0', {r1}, "20261202", otra), noviembre},
       EstadoCotejo::Ambigua,
       ""},
      {"copia de la remesa",
       Fichero('2', {r1}),
       {noviembre, noviembre},
       EstadoCotejo::Hallada,
       "0.Q19, registro 3"},
      {"otra hecha con ella",
       Fichero('2', {r1}),
       {noviembre, Fichero('0', {r1, {"R2", "M2", "00000000001", ""}})},
       EstadoCotejo::Hallada,
       "0.Q19, registro 3"},
      {"en el juego de SEPA",
       Fichero('2', {{"ANO-1", "M1", "00000000100", "AM04"}}),
       {Fichero('0', {{"A\xD1O_1", "M1", "00000000100", ""}})},
       EstadoCotejo::Hallada,
       "0.Q19, registro 3"},
      {"otro importe",
       Fichero('2', {{"R1", "M1", "00000000101", "AM04"}}),
       {noviembre},
       EstadoCotejo::NoHallada,
       ""},
      {"otro acreedor",
       Fichero('2', {r1}),
       {Fichero('0', {r1}, "20261201", kOriginal, "ES70000B99812034")},
       EstadoCotejo::NoHallada,
       ""},
      {"otro sufijo del acreedor",
       Fichero('2', {r1}),
       {Fichero('0', {r1}, "20261201", kOriginal, "ES33007B99654105")},
       EstadoCotejo::Hallada,
       "0.Q19, registro 3"},
      {"sin referencia",
       Fichero('2', {{"", "M1", "00000000100", "AM04"}}),
       {Fichero('0', {r1, {"NOTPROVIDED", "M1", "00000000100", ""}})},
       EstadoCotejo::Hallada,
       "0.Q19, registro 4"},
      {"sin ninguna referencia",
       Fichero('2', {{"", "", "00000000100", "AM04"}}),
       {Fichero('0', {{"", "", "00000000100", ""}})},
       EstadoCotejo::NoHallada,
       ""},
  };
  for (const auto& caso : casos) {
    SCOPED_TRACE(caso.que);
    Lote lote;
    lote.leer(escribir("dev", Unidos(caso.devuelto)));
    Cotejo cotejo(lote);
    for (std::size_t i = 0; i < caso.presentadas.size(); ++i) {
      const bool copia = i > 0 && caso.presentadas[i] == caso.presentadas[i - 1];
      EXPECT_EQ(cotejo.buscarEn(escribir(std::to_string(i) + ".Q19", Unidos(caso.presentadas[i], "\n"))),
                !copia);
    }
    const auto hallazgo = cotejo.hallazgo(0);
    EXPECT_EQ(hallazgo.estado, caso.estado);
    const std::string donde = TextoCotejo(cotejo, hallazgo).toStdString();
    EXPECT_TRUE(caso.donde.empty() ? !donde.empty() : donde == caso.donde) << donde;
  }
}

TEST_F(Siguiente, HaceLaRemesaConLosRegistrosEnteros) {
  const Caso z{"Z", "M1", "00000000100", "AM04"}, a{"A", "M2", "00000000250", "MS03"},
      mal{"B", "M3", "00000000300", "AC04"}, muerto{"C", "M4", "00000000400", "MD07"};
  auto noviembre = Fichero('0', {z, mal, a, muerto});
  const std::string cuarto =
      pruebas::Registro("0319143004", {{kReferenciaAdeudo, "A"}, {kReferenciaMandato, "M2"}});
  const std::string sexto =
      pruebas::Registro("0319143006", {{kReferenciaAdeudo, "A"}, {kReferenciaMandato, "M2"}});
  noviembre.insert(noviembre.begin() + 5, {cuarto, sexto});
  auto enUtf8 = noviembre;
  enUtf8[4].replace(118, 1, "\xC3\x91");
  noviembre[4][118] = '\xD1';
  presentar("noviembre.Q19", enUtf8);
  // La misma referencia en la remesa de otro acreedor es otra deuda; en otra del mismo, la misma.
  const Caso otro{"Z", "M1", "00000000100", "AM04"};
  presentar("otro.Q19", Fichero('0', {otro}, "20261231", "PRE-B", "ES70000B99812034"));
  presentar("diciembre.Q19", Fichero('0', {z}, "20261231", "PRE-C"));
  const Caso perdido{"P", "M9", "00000000001", "AM04"};
  leer(Unidos(Fichero('2', {z, mal, a, muerto, perdido})));
  leer(Unidos(Fichero('2', {otro}, "20261231", "PRE-B", "ES70000B99812034")), "b");
  leer(Unidos(Fichero('2', {z}, "20261231", "PRE-C")), "c");
  const Cotejo cotejo = cotejar();

  EXPECT_EQ(Propuestas(lote_), (std::vector<std::size_t>{0, 2, 4, 5, 6}));
  PeticionNueva peticion{{0, 2, 3, 4, 5, 6}, 2027y / 1 / 4, local_days(2026y / 12 / 9) + 8h + 30min};
  const RemesaNueva nueva = HacerRemesa(lote_, cotejo, peticion);
  const auto registros = pruebas::Bytes(nueva.registros);
  ASSERT_EQ(registros.size(), 13U);
  EXPECT_EQ(LeerCampo(registros[0], kIdentificacionFichero), "PRE2026120908300000000ACUARIO000000");
  EXPECT_EQ(LeerCampo(registros[0], kFechaCreacion), "20261209");
  for (const std::size_t i : {1, 8})
    EXPECT_EQ(LeerCampo(registros[i], kFechaCobro), "20270104");
  // Por referencia, con los opcionales detrás de su adeudo y sin cambiar nada.
  EXPECT_EQ(registros[2], noviembre[4]);
  EXPECT_EQ(registros[3], cuarto);
  EXPECT_EQ(registros[4], sexto);
  EXPECT_EQ(registros[5], noviembre[2]);
  EXPECT_EQ(Recortar(LeerCampo(registros[9], kReferenciaAdeudo)), "Z-2");
  EXPECT_EQ(nueva.adeudos, 3U);
  EXPECT_EQ(nueva.importe, 450);
  EXPECT_EQ(nueva.conSufijo, 1U);
  EXPECT_EQ(nueva.otrosPresentadores.size(), 1U);
  std::uint64_t errores = 0;
  ComprobarLista(nueva.registros, 2026y / 12 / 9, [&](Hallazgo&& h) {
    errores += h.codigo == CodigoHallazgo::TotalImportes || h.codigo == CodigoHallazgo::TotalAdeudos ||
               h.codigo == CodigoHallazgo::TotalRegistros || h.codigo == CodigoHallazgo::FueraDeOrden ||
               h.codigo == CodigoHallazgo::OtraCabecera || h.codigo == CodigoHallazgo::SinOrdenar ||
               h.codigo == CodigoHallazgo::ReferenciaRepetida;
  });
  EXPECT_EQ(errores, 0U);
  ASSERT_EQ(nueva.fuera.size(), 3U);
  const std::pair<std::size_t, CausaFuera> fuera[] = {
      {3, CausaFuera::Nunca}, {4, CausaFuera::NoHallada}, {6, CausaFuera::YaIncluida}};
  for (std::size_t i = 0; i < 3; ++i) {
    EXPECT_EQ(nueva.fuera[i].devolucion, fuera[i].first);
    EXPECT_EQ(nueva.fuera[i].causa, fuera[i].second);
    EXPECT_FALSE(TextoFuera(nueva.fuera[i]).isEmpty());
  }

  peticion.conSufijo = true;
  peticion.elegidas = {2};
  const auto conSufijo = pruebas::Bytes(HacerRemesa(lote_, cotejo, peticion).registros);
  for (const std::size_t i : {2, 3, 4})
    EXPECT_EQ(Recortar(LeerCampo(conSufijo[i], kReferenciaAdeudo)), "A-2");
  peticion.elegidas = {4};
  EXPECT_TRUE(HacerRemesa(lote_, cotejo, peticion).registros.empty());
}

// Un bloque entero son sus adeudos, menos los que tienen su línea, que es la que dice si van. Sea la remesa
// de texto o el XML en que se exportó.
TEST_F(Siguiente, UnBloqueEnteroSonLosSuyos) {
  const std::string larga(35, 'L');
  auto remesa = Fichero('0', {{"R1", "M1", "00000000100", ""},
                              {larga, "M2", "00000000200", ""},
                              {"DE OTRO TIPO", "M5", "00005000000", ""},
                              {larga, "M3", "00000000300", ""}});
  EscribirCampo(remesa[4], kTipoAdeudo, "OOFF");
  const auto texto = escribir("r.Q19", Unidos(remesa)), xml = carpeta_ / "r.xml";
  std::vector<std::unique_ptr<iso20022::Fuente>> fuentes;
  fuentes.push_back(std::make_unique<iso20022::FuenteFichero>(texto));
  iso20022::Exportacion exportacion(std::move(fuentes), {});
  ASSERT_TRUE(exportacion.examinar([](const iso20022::Nota&) {})->posible);
  exportacion.escribir(xml);
  const std::string id(kOriginal);
  leer(Xml("CstmrPmtStsRpt",
           "<OrgnlGrpInfAndSts><OrgnlMsgId>" + id +
               "</OrgnlMsgId></OrgnlGrpInfAndSts><OrgnlPmtInfAndSts><OrgnlPmtInfId>" + id.substr(0, 33) +
               "-1</OrgnlPmtInfId><OrgnlNbOfTxs>3</OrgnlNbOfTxs><PmtInfSts>RJCT</PmtInfSts><StsRsnInf><Rsn>"
               "<Cd>TM01</Cd></Rsn></StsRsnInf><TxInfAndSts><OrgnlEndToEndId>R1</OrgnlEndToEndId><StsRsnInf>"
               "<Rsn><Cd>MD07</Cd></Rsn></StsRsnInf></TxInfAndSts></OrgnlPmtInfAndSts>"));
  const std::vector<std::filesystem::path> casos[] = {{texto}, {xml}, {texto, xml}};
  for (const auto& presentadas : casos) {
    Cotejo cotejo(lote_);
    for (const auto& presentada : presentadas)
      cotejo.buscarEn(presentada);
    const RemesaNueva nueva = HacerRemesa(lote_, cotejo, {Propuestas(lote_), 2027y / 1 / 4, {}});
    EXPECT_EQ(nueva.adeudos, 2U) << presentadas.front();
    EXPECT_EQ(nueva.importe, 500) << presentadas.front();
    ASSERT_EQ(nueva.registros.size(), 7U);
    EXPECT_EQ(LeerCampo(nueva.registros[2], kReferenciaAdeudo), std::string(33, 'L') + "-2");
    EXPECT_EQ(LeerCampo(nueva.registros[3], kReferenciaAdeudo), larga);
  }
}

// Devuelta dos veces, va una; lo que son dos cobros, aunque se parezcan, va dos veces.
TEST_F(Siguiente, UnaDeudaNoVaDosVeces) {
  const std::string larga(35, 'L'), cortada = std::string(33, 'L') + "-2";
  const struct {
    std::string noviembre, diciembre;
    std::size_t adeudos;
  } casos[] = {{"R", "R", 1},     {"R", "R-2", 1}, {larga, cortada, 1}, {"R-2", "R", 2},
               {"R-2", "R-3", 2}, {"R", "R-1", 2}, {"R", "RS-2", 2},    {"", "", 2}};
  for (const auto& caso : casos) {
    SCOPED_TRACE(caso.noviembre + " " + caso.diciembre);
    const Caso uno{caso.noviembre, "M", "00000000100", "AM04"},
        otro{caso.diciembre, "M", "00000000100", "AM04"};
    Lote lote;
    lote.leer(escribir("n", Unidos(Fichero('2', {uno}))));
    lote.leer(escribir("d", Unidos(Fichero('2', {otro}, "20261231", "PRE-D"))));
    Cotejo cotejo(lote);
    cotejo.buscarEn(escribir("n.Q19", Unidos(Fichero('0', {uno}))));
    cotejo.buscarEn(escribir("d.Q19", Unidos(Fichero('0', {otro}, "20261231", "PRE-D"))));
    const RemesaNueva nueva = HacerRemesa(lote, cotejo, {Propuestas(lote), 2027y / 1 / 4, {}});
    EXPECT_EQ(nueva.adeudos, caso.adeudos);
    EXPECT_EQ(nueva.adeudos + nueva.fuera.size(), 2U);
  }
}

TEST(Siguientes, ProponeElPrimerDiaHabilConUnDiaDePlazo) {
  const std::pair<Dia, Dia> casos[] = {{2026y / 11 / 25, 2026y / 11 / 26},
                                       {2026y / 11 / 27, 2026y / 11 / 30},
                                       {2026y / 12 / 24, 2026y / 12 / 28},
                                       {2026y / 12 / 31, 2027y / 1 / 4}};
  for (const auto& [hoy, cobro] : casos)
    EXPECT_EQ(FechaPropuesta(hoy), cobro);
}

}  // namespace
