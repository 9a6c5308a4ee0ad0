# The headers in their folders, and the package that find_package(MultiChannelServerCommon CONFIG) finds.
include(CMakePackageConfigHelpers)

set(mcs_package_dir ${CMAKE_INSTALL_LIBDIR}/cmake/MultiChannelServerCommon)

# Headers that only the sources of a library include.
set(mcs_private_headers cfgcontents.h cfgfile.h cfglock.h cfgsection.h cfgstore.h cfgworkingcopy.h inireader.h
  iniwriter.h pathsegments.h serverclientdetail.h
  formrow.h statusnode.h lockmark.h spokenname.h valuetip.h
  layoutcost.h logtextedit.h longlines.h markupscanner.h markuptext.h readingcost.h stylecost.h textcost.h
  mcsmpxorvstatusicons.h mcsmpxorvstatuslistmodelimplementation.h
  multichannelservercommondll.h observabledeleter.h rownumberheader.h
  bytebuffer.h cborhead.h cborinput.h cboroutput.h changewriter.h content.h endedobjects.h framedsocket.h frequentmessages.h ichannel.h iconnector.h
  ieventloop.h itemkinds.h lingeringsocket.h message.h messagetypes.h mirrorrecord.h nativesocket.h pagedtable.h qteventloop.h sendqueue.h serverhub.h
  serversession.h staleveil.h socketconnector.h socketlistener.h subscription.h tlsfiles.h treechange.h treemirror.h
  changeerror.h contentchanges.h editqueue.h itemchanges.h localitems.h mirroritems.h mirrorrecordpool.h mirrorrecords.h
  snapshotmerge.h
  blankingimpl.h frequencyset.h hertztable.h moduleblankingrecord.h
  gtsconfig.h gtsdisplayimpl.h pollinterfacefactory.h pollthread.h pollthreadimpl.h
  errorreport.h moduletrace.h notloaded.h plantmodule.h publishedmodule.h frequencycell.h frequencydelegate.h
  treepath.h treewatcher.h vtclient.h vtclientdetail.h
  vtlimits.h vttic.h
  modbusaddress.h modbusconnection.h modbuserror.h modbusmessage.h modbussettings.h modbustcpinterface.h
  reconnectdelay.h systemmessage.h)
list(TRANSFORM mcs_private_headers REPLACE "\\." "\\\\.")
list(JOIN mcs_private_headers "|" mcs_private_pattern)
install(DIRECTORY platform devicecontrol DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}
  FILES_MATCHING PATTERN "*.h" REGEX "/(${mcs_private_pattern})$" EXCLUDE)

configure_package_config_file(cmake/MultiChannelServerCommonConfig.cmake.in
  ${PROJECT_BINARY_DIR}/MultiChannelServerCommonConfig.cmake INSTALL_DESTINATION ${mcs_package_dir})
write_basic_package_version_file(${PROJECT_BINARY_DIR}/MultiChannelServerCommonConfigVersion.cmake
  COMPATIBILITY SameMinorVersion)
install(FILES
  ${PROJECT_BINARY_DIR}/MultiChannelServerCommonConfig.cmake
  ${PROJECT_BINARY_DIR}/MultiChannelServerCommonConfigVersion.cmake
  DESTINATION ${mcs_package_dir})
install(EXPORT MultiChannelServerTargets NAMESPACE MultiChannelServer:: DESTINATION ${mcs_package_dir})
