include $(sort $(wildcard $(BR2_EXTERNAL_NETXML_PATH)/*/*.mk))
