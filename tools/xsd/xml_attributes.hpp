// The attributes of the xml: namespace as a schema document that is built in.
#pragma once

#include <string_view>

namespace netxml::xsd {

// Declares xml:lang, xml:space, xml:base and xml:id, and the attribute group of the first three and
// the last (Namespaces in XML; XML 1.0, sections 2.10 and 2.12; XML Base; xml:id).
inline constexpr std::string_view kXmlAttributes =
    R"(<xs:schema targetNamespace="http://www.w3.org/XML/1998/namespace"
    xmlns:xs="http://www.w3.org/2001/XMLSchema">
  <xs:attribute name="lang">
    <xs:simpleType>
      <xs:union memberTypes="xs:language">
        <xs:simpleType>
          <xs:restriction base="xs:string"><xs:enumeration value=""/></xs:restriction>
        </xs:simpleType>
      </xs:union>
    </xs:simpleType>
  </xs:attribute>
  <xs:attribute name="space">
    <xs:simpleType>
      <xs:restriction base="xs:NCName">
        <xs:enumeration value="default"/>
        <xs:enumeration value="preserve"/>
      </xs:restriction>
    </xs:simpleType>
  </xs:attribute>
  <xs:attribute name="base" type="xs:anyURI"/>
  <xs:attribute name="id" type="xs:ID"/>
  <xs:attributeGroup name="specialAttrs">
    <xs:attribute ref="xml:base"/>
    <xs:attribute ref="xml:lang"/>
    <xs:attribute ref="xml:space"/>
    <xs:attribute ref="xml:id"/>
  </xs:attributeGroup>
</xs:schema>
)";

}  // namespace netxml::xsd
