// placeholder until the module object lands
