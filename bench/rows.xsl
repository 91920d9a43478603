<?xml version="1.0"?>
<!-- The result script of a DataArray load of @XPATH@ into T; compare_xml.sh puts the expression in. -->
<xsl:stylesheet version="1.0" xmlns:xsl="http://www.w3.org/1999/XSL/Transform">
  <xsl:output method="text"/>
  <xsl:template match="/">
    <xsl:for-each select="@XPATH@">
      <xsl:text>T[</xsl:text>
      <xsl:value-of select="position() - 1"/>
      <xsl:text>]={{</xsl:text>
      <xsl:for-each select="*">
        <xsl:value-of select="name()"/>
        <xsl:text>="</xsl:text>
        <xsl:value-of select="."/>
        <xsl:text>";</xsl:text>
      </xsl:for-each>
      <xsl:text>};};</xsl:text>
    </xsl:for-each>
    <xsl:text>READER_NUM_RECORDS=</xsl:text>
    <xsl:value-of select="count(@XPATH@)"/>
    <xsl:text>;</xsl:text>
  </xsl:template>
</xsl:stylesheet>
